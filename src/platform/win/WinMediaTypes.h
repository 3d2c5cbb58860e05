#pragma once

// The media check's question to the device, without Qt.

#include <string>

/// The number of media types the drive ("E:") reports: -1 when the device cannot be opened, 0 when
/// the query fails, else the reply's size in 24-byte geometry records, rounded.
int winMediaTypeCount(const std::string &drive);
