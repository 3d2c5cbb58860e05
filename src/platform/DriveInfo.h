#pragma once

#include <QList>
#include <QString>
#include <QtGlobal>

/// One of the PC's drives as the card slot search sees it.
struct DriveInfo
{
    /// The kinds of drive, numbered as the Windows file system object numbers them.
    enum Type { Unknown = 0, Removable = 1, Fixed = 2, Network = 3, CdRom = 4, RamDisk = 5 };

    QString path; // Windows "E:"; elsewhere the mount point (the device node while not mounted)
    int type = Unknown;
    bool ready = false;
    QString fileSystem; // "FAT" for FAT12 and FAT16, "FAT32", else the file system's own name
    qint64 totalSize = 0;
    qint64 freeSpace = 0;
    qint64 availableSpace = 0;
    QString device; // the block device behind it, where there is one ("/dev/sdb1")
};

/// Where the drives come from: the platform's own list, or a fixed list in tests.
class DriveSource
{
public:
    virtual ~DriveSource() = default;
    virtual QList<DriveInfo> drives() const = 0;
};
