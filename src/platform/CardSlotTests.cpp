#include "platform/CardSlotTests.h"

#include "platform/MediaCheck.h"

namespace CardSlotTests {

bool typeIsExamined(const DriveInfo &drive)
{
    return drive.type == DriveInfo::Removable || drive.type == DriveInfo::Fixed;
}

bool fileSystemTest(const DriveInfo &drive)
{
    return drive.ready && drive.fileSystem == QLatin1String("FAT");
}

bool sizeTest(const DriveInfo &drive)
{
    return drive.ready && drive.totalSize <= MaxCardBytes;
}

bool qualifies(const DriveInfo &drive)
{
    return typeIsExamined(drive) && modFDCHK::MediaCheck(drive) && fileSystemTest(drive) && sizeTest(drive);
}

} // namespace CardSlotTests
