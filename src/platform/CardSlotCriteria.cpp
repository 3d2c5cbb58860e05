#include "platform/CardSlotCriteria.h"

#include "platform/MediaCheck.h"

namespace CardSlotCriteria {

bool typeIsExamined(const DriveInfo &drive)
{
    return drive.type == DriveInfo::Removable || drive.type == DriveInfo::Fixed;
}

bool fileSystemQualifies(const DriveInfo &drive)
{
    return drive.ready && drive.fileSystem == QLatin1String("FAT");
}

bool sizeQualifies(const DriveInfo &drive)
{
    return drive.ready && drive.totalSize <= MaxCardBytes;
}

bool qualifies(const DriveInfo &drive)
{
    return typeIsExamined(drive) && modFDCHK::MediaCheck(drive) && fileSystemQualifies(drive)
        && sizeQualifies(drive);
}

} // namespace CardSlotCriteria
