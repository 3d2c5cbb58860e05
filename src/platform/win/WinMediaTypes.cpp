#include "platform/win/WinMediaTypes.h"

#include <windows.h>
#include <winioctl.h>

namespace {

constexpr DWORD MediaListBytes = 504; // room for 21 DISK_GEOMETRY records of 24 bytes
constexpr DWORD GeometryBytes = 24;
constexpr DWORD IoctlDiskGetMediaTypes = 0x00070C00;

} // namespace

int winMediaTypeCount(const std::string &drive)
{
    const std::string device = "\\\\.\\" + drive;
    // Access 0: a query that needs no medium and no rights to the data.
    HANDLE handle = CreateFileA(device.c_str(), 0, FILE_SHARE_READ, nullptr, OPEN_EXISTING, 0, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return -1;
    unsigned char mediaList[MediaListBytes] = {};
    DWORD bytes = 0;
    const BOOL ok = DeviceIoControl(handle, IoctlDiskGetMediaTypes, nullptr, 0, mediaList, MediaListBytes,
                                    &bytes, nullptr);
    CloseHandle(handle);
    if (!ok)
        return 0;
    return static_cast<int>((bytes + GeometryBytes / 2) / GeometryBytes);
}
