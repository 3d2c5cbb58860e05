#pragma once

// The PC's drives from Win32, without Qt, so that this file compiles with any Windows compiler.

#include <string>
#include <vector>

struct WinDrive
{
    std::string path; // "E:"
    int type = 0; // numbered as the file system object numbers drive types (1 removable, 2 fixed...)
    bool ready = false;
    std::string fileSystem; // "FAT", "FAT32", "NTFS", "exFAT"...
    long long totalSize = 0;
    long long freeSpace = 0;
    long long availableSpace = 0;
};

/// Every drive letter in use, with what Windows says of it. No critical-error box appears for a
/// drive without a medium.
std::vector<WinDrive> listWindowsDrives();
