#pragma once

#include "platform/DriveInfo.h"

#include <QString>

/// The media check: does this drive look like a card reader rather than a floppy drive?
namespace modFDCHK {

/// The verdict on the number of media types a drive reports: exactly 11, or 0 when the query
/// failed, passes; any other count fails.
/// Kept on purpose: these thresholds, and a failed query passing.
bool mediaCountPasses(int count);

/// The number of 24-byte geometry records in a reply of `bytes` bytes, rounded to the nearest.
int mediaCountFromBytes(unsigned long bytes);

/// The module's description of a Windows MEDIA_TYPE value ("Unknown" for any other).
QString mediaDescription(int mediaType);

/// The verdict for a drive whose device reported `count` media types; -1 when the device could
/// not be opened, which fails.
bool mediaCheckVerdict(int count);

/// The check for one drive. On Windows it asks the device for its media types; elsewhere a
/// floppy device fails and every other drive passes.
bool MediaCheck(const DriveInfo &drive);

} // namespace modFDCHK
