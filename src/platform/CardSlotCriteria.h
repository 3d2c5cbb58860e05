#pragma once

#include "platform/DriveInfo.h"

/// What a drive must meet to be offered as the card slot.
namespace CardSlotCriteria {

/// Kept on purpose: a drive larger than this (128 MiB) is not the device's card and is never offered.
constexpr qint64 MaxCardBytes = 134'217'728;

/// Removable and fixed drives are examined; unknown, network, CD and RAM drives are not.
bool typeIsExamined(const DriveInfo &drive);
/// The file-system test: ready, and formatted FAT (FAT12 or FAT16); FAT32 and others fail.
bool fileSystemQualifies(const DriveInfo &drive);
/// The size test: ready, and not larger than 128 MiB.
bool sizeQualifies(const DriveInfo &drive);
/// Examined type, then the media check, the file-system test and the size test, in that order.
bool qualifies(const DriveInfo &drive);

} // namespace CardSlotCriteria
