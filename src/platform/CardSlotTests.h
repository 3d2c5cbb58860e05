#pragma once

#include "platform/DriveInfo.h"

/// The tests a drive must pass to be offered as the card slot.
namespace CardSlotTests {

/// Kept on purpose: a drive larger than this (128 MiB) is not the device's card and is never offered.
constexpr qint64 MaxCardBytes = 134'217'728;

/// Removable and fixed drives are examined; unknown, network, CD and RAM drives are not.
bool typeIsExamined(const DriveInfo &drive);
/// Ready, and formatted FAT (FAT12 or FAT16): FAT32 and others fail.
bool fileSystemTest(const DriveInfo &drive);
/// Ready, and not larger than 128 MiB.
bool sizeTest(const DriveInfo &drive);
/// Examined type, then the media check, the file-system test and the size test, in that order.
bool qualifies(const DriveInfo &drive);

} // namespace CardSlotTests
