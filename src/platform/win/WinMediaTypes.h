#pragma once

// The media check's question to the device, without Qt.

#include <string>

/// The number of media types the drive ("E:") reports: -1 when the device cannot be opened, 0 when
/// the query fails, else the reply's size in 24-byte geometry records, rounded.
int winMediaTypeCount(const std::string &drive);

/// The count that the Wine test harness's `DQ480_WINE_MEDIA_TYPES` ("D:=11") stands in for the
/// drive's own answer; -1 when it names another drive or is not of that form.
int wineStandInMediaCount(const std::string &drive, const std::string &standIn);
