#pragma once

#include "platform/DriveInfo.h"

#include <QByteArray>

#include <functional>
#include <optional>

/// Where the Linux drive source reads the system; tests point these at fixture trees.
struct LinuxSystemRoots
{
    QString mountInfo = QStringLiteral("/proc/self/mountinfo");
    QString sysfs = QStringLiteral("/sys");
    QString udevData = QStringLiteral("/run/udev/data");
    QString proc = QStringLiteral("/proc");
};

/// Sizes of a mounted volume, as statvfs gives them.
struct VolumeSpace
{
    qint64 total = 0;
    qint64 free = 0;
    qint64 available = 0;
    quint64 blocks = 0; // for vfat, one block is one cluster
    quint64 files = 0; // for fusefat, the number of data clusters
};

/// The drives of a Linux PC: mounted block devices (removable when their disk is, or an SD or USB
/// reader's), network shares, CD file systems and RAM disks, then the removable volumes that are in
/// but not mounted. Pseudo file systems are not drives.
class LinuxDriveSource : public DriveSource
{
public:
    using SpaceReader = std::function<std::optional<VolumeSpace>(const QString &mountPoint)>;
    using BootSectorReader = std::function<QByteArray(const QString &device)>;

    /// Without a space reader, statvfs: directly for block devices and RAM disks, with a time limit
    /// (a stuck volume is not ready) for network shares and FUSE volumes, whose servers can hang.
    explicit LinuxDriveSource(LinuxSystemRoots roots = {}, SpaceReader space = {},
                              BootSectorReader bootSector = readBootSector);

    QList<DriveInfo> drives() const override;

    static std::optional<VolumeSpace> statvfsSpace(const QString &mountPoint);
    /// The first 512 bytes of a device, or nothing when it cannot be read (most users cannot).
    static QByteArray readBootSector(const QString &device);

private:
    QString fatText(int major, int minor, const QString &device,
                    const std::optional<VolumeSpace> &space) const;

    LinuxSystemRoots m_roots;
    SpaceReader m_space;
    SpaceReader m_kernelSpace; // of a volume the kernel itself serves
    BootSectorReader m_bootSector;
};
