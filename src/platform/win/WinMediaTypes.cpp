#include "platform/win/WinMediaTypes.h"

#include <windows.h>
#include <winioctl.h>

#include <cctype>
#include <cstdlib>

namespace {

constexpr DWORD MediaListBytes = 504; // room for 21 DISK_GEOMETRY records of 24 bytes
constexpr DWORD GeometryBytes = 24;
constexpr DWORD IoctlDiskGetMediaTypes = 0x00070C00;

// Wine's ntdll says who it is; Windows' own never does.
bool runsUnderWine()
{
    const HMODULE ntdll = GetModuleHandleA("ntdll.dll");
    return ntdll && GetProcAddress(ntdll, "wine_get_version");
}

} // namespace

int wineStandInMediaCount(const std::string &drive, const std::string &standIn)
{
    // "D:=11": the drive, "=", the count.
    const std::size_t equals = standIn.find('=');
    if (drive.size() != 2 || equals != 2 || standIn.size() <= 3 || standIn[1] != ':')
        return -1;
    if (std::toupper(static_cast<unsigned char>(standIn[0]))
        != std::toupper(static_cast<unsigned char>(drive[0])))
        return -1;
    char *end = nullptr;
    const long count = std::strtol(standIn.c_str() + 3, &end, 10);
    return *end == '\0' && count >= 0 && count <= 21 ? static_cast<int>(count) : -1;
}

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
    // Wine answers this query for a loop device with two records, where a card reader gives
    // eleven; its test harness stands in the reader's answer for the one drive it maps to a card
    // image. Only under Wine: on a Windows PC the device always answers for itself.
    char standIn[16] = {};
    const DWORD length = GetEnvironmentVariableA("DQ480_WINE_MEDIA_TYPES", standIn, sizeof standIn);
    if (length > 0 && length < sizeof standIn && runsUnderWine()) {
        if (const int count = wineStandInMediaCount(drive, standIn); count >= 0)
            return count;
    }
    if (!ok)
        return 0;
    return static_cast<int>((bytes + GeometryBytes / 2) / GeometryBytes);
}
