#include "platform/win/WinDrives.h"

#include <windows.h>

namespace {

// GetDriveType's numbering, mapped to the file system object's.
int driveTypeOf(UINT windowsType)
{
    switch (windowsType) {
    case DRIVE_REMOVABLE:
        return 1;
    case DRIVE_FIXED:
        return 2;
    case DRIVE_REMOTE:
        return 3;
    case DRIVE_CDROM:
        return 4;
    case DRIVE_RAMDISK:
        return 5;
    default:
        return 0;
    }
}

} // namespace

std::vector<WinDrive> listWindowsDrives()
{
    // A card reader without a card must not bring up "There is no disk in the drive".
    const UINT previousMode = SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
    std::vector<WinDrive> drives;
    char roots[512] = {};
    const DWORD length = GetLogicalDriveStringsA(sizeof roots - 1, roots);
    for (const char *root = roots; length > 0 && *root != '\0';
         root += std::char_traits<char>::length(root) + 1) {
        WinDrive drive;
        drive.path = std::string(root, 2); // "E:\" gives "E:"
        drive.type = driveTypeOf(GetDriveTypeA(root));
        char fileSystem[MAX_PATH + 1] = {};
        drive.ready = GetVolumeInformationA(root, nullptr, 0, nullptr, nullptr, nullptr, fileSystem,
                                            sizeof fileSystem)
            != 0;
        if (drive.ready) {
            drive.fileSystem = fileSystem;
            ULARGE_INTEGER available {}, total {}, free {};
            if (GetDiskFreeSpaceExA(root, &available, &total, &free)) {
                drive.totalSize = static_cast<long long>(total.QuadPart);
                drive.freeSpace = static_cast<long long>(free.QuadPart);
                drive.availableSpace = static_cast<long long>(available.QuadPart);
            }
        }
        drives.push_back(drive);
    }
    SetErrorMode(previousMode);
    return drives;
}
