#include "platform/linux/LinuxDriveSource.h"

#include "platform/FatVariant.h"
#include "platform/linux/BoundedSpaceReader.h"
#include "platform/linux/FuseImage.h"
#include "platform/linux/MountInfo.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>

#include <algorithm>

#include <sys/statvfs.h>

namespace {

QString readText(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()).trimmed() : QString();
}

const QSet<QString> &networkTypes()
{
    static const QSet<QString> types {
        QStringLiteral("nfs"),  QStringLiteral("nfs4"),       QStringLiteral("cifs"),
        QStringLiteral("smb3"), QStringLiteral("smbfs"),      QStringLiteral("ncpfs"),
        QStringLiteral("afs"),  QStringLiteral("fuse.sshfs"), QStringLiteral("9p")};
    return types;
}

bool isFat(const QString &fsType)
{
    return fsType == QLatin1String("vfat") || fsType == QLatin1String("msdos");
}

QString otherFileSystemText(const QString &fsType)
{
    if (fsType == QLatin1String("exfat"))
        return QStringLiteral("exFAT");
    if (fsType == QLatin1String("ntfs") || fsType == QLatin1String("ntfs3"))
        return QStringLiteral("NTFS");
    return fsType;
}

// A block device's sysfs folder, and whether its disk is removable: the disk's own flag, or a
// reader on an SD (mmc) or USB bus, which the kernel often reports as fixed.
struct BlockDevice
{
    bool exists = false;
    bool removable = false;
    QString name;
};

BlockDevice blockDevice(const QString &sysfs, int major, int minor)
{
    const QFileInfo link(QStringLiteral("%1/dev/block/%2:%3").arg(sysfs).arg(major).arg(minor));
    const QString folder = link.canonicalFilePath();
    if (folder.isEmpty())
        return {};
    const bool partition = QFileInfo::exists(folder + QStringLiteral("/partition"));
    const QString disk = partition ? QFileInfo(folder).absolutePath() : folder;
    const QString diskName = QFileInfo(disk).fileName();
    const bool removable = readText(disk + QStringLiteral("/removable")) == QLatin1String("1")
        || diskName.startsWith(QLatin1String("mmcblk")) || folder.contains(QLatin1String("/usb"));
    return {true, removable, QFileInfo(folder).fileName()};
}

} // namespace

LinuxDriveSource::LinuxDriveSource(LinuxSystemRoots roots, SpaceReader space, BootSectorReader bootSector)
    : m_roots(std::move(roots))
    , m_space(space ? space : boundedSpaceReader(std::chrono::seconds(2)))
    , m_kernelSpace(space ? std::move(space) : statvfsSpace)
    , m_bootSector(std::move(bootSector))
{ }

std::optional<VolumeSpace> LinuxDriveSource::statvfsSpace(const QString &mountPoint)
{
    struct statvfs info
    { };
    if (::statvfs(QFile::encodeName(mountPoint).constData(), &info) != 0)
        return std::nullopt;
    const auto unit = static_cast<qint64>(info.f_frsize ? info.f_frsize : info.f_bsize);
    return VolumeSpace {static_cast<qint64>(info.f_blocks) * unit, static_cast<qint64>(info.f_bfree) * unit,
                        static_cast<qint64>(info.f_bavail) * unit, static_cast<quint64>(info.f_blocks),
                        static_cast<quint64>(info.f_files)};
}

QByteArray LinuxDriveSource::readBootSector(const QString &device)
{
    QFile file(device);
    return file.open(QIODevice::ReadOnly) ? file.read(512) : QByteArray();
}

QString LinuxDriveSource::fatText(int major, int minor, const QString &device,
                                  const std::optional<VolumeSpace> &space) const
{
    // udev has probed the volume already; else the boot sector, where it can be read; else the
    // cluster count that statvfs reports for a mounted FAT volume.
    const QString udev = readText(QStringLiteral("%1/b%2:%3").arg(m_roots.udevData).arg(major).arg(minor));
    for (const QString &line : udev.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("E:ID_FS_VERSION="))) {
            if (const auto kind = FatVariant::kindFromUdevVersion(line.mid(16)))
                return FatVariant::fileSystemText(*kind);
        }
    }
    if (const auto clusters = FatVariant::clusterCountFromBootSector(m_bootSector(device)))
        return FatVariant::fileSystemText(FatVariant::kindFromClusterCount(*clusters));
    if (space)
        return FatVariant::fileSystemText(FatVariant::kindFromClusterCount(space->blocks));
    return QStringLiteral("FAT");
}

QList<DriveInfo> LinuxDriveSource::drives() const
{
    QFile mountInfo(m_roots.mountInfo);
    if (!mountInfo.open(QIODevice::ReadOnly))
        return {};
    QList<DriveInfo> drives;
    QSet<QString> mountedDevices;
    std::optional<QHash<QString, QString>> fuseImages; // every process's command line: read once, if needed
    for (const MountEntry &mount : parseMountInfo(QString::fromUtf8(mountInfo.readAll()))) {
        DriveInfo drive;
        drive.path = mount.mountPoint;
        drive.device = mount.source;
        if (networkTypes().contains(mount.fsType)) {
            drive.type = DriveInfo::Network;
        } else if (mount.fsType == QLatin1String("iso9660") || mount.fsType == QLatin1String("udf")) {
            drive.type = DriveInfo::CdRom;
        } else if (mount.fsType == QLatin1String("tmpfs") || mount.fsType == QLatin1String("ramfs")) {
            drive.type = DriveInfo::RamDisk;
        } else if (mount.fsType == QLatin1String("fuse.fusefat")) {
            // A FAT card or card image mounted in user space: a removable FAT volume. Its image
            // is what a format works on.
            drive.type = DriveInfo::Removable;
            if (!fuseImages)
                fuseImages = fuseFatImages(m_roots.proc);
            if (const QString image = fuseImages->value(mount.mountPoint); !image.isEmpty())
                drive.device = image;
        } else if (mount.major != 0) {
            const BlockDevice block = blockDevice(m_roots.sysfs, mount.major, mount.minor);
            if (!block.exists)
                continue;
            drive.type = block.removable ? DriveInfo::Removable : DriveInfo::Fixed;
            mountedDevices.insert(block.name);
        } else {
            continue; // proc, sysfs, cgroup, overlay and the like
        }
        // The kernel answers at once for a block device or a RAM disk; a network share or a FUSE
        // volume (device numbers 0:n) has a server that may hang, and is asked with a time limit.
        const bool kernelServed = mount.major != 0 || drive.type == DriveInfo::RamDisk;
        const std::optional<VolumeSpace> space
            = kernelServed ? m_kernelSpace(mount.mountPoint) : m_space(mount.mountPoint);
        drive.ready = space.has_value();
        if (space) {
            drive.totalSize = space->total;
            drive.freeSpace = space->free;
            drive.availableSpace = space->available;
        }
        if (mount.fsType == QLatin1String("fuse.fusefat") && space) // it counts data clusters as inodes
            drive.fileSystem = FatVariant::fileSystemText(FatVariant::kindFromClusterCount(space->files));
        else
            drive.fileSystem = isFat(mount.fsType) ? fatText(mount.major, mount.minor, mount.source, space)
                                                   : otherFileSystemText(mount.fsType);
        drives.append(drive);
    }

    // Cards that are in but not mounted: listed, not ready, so the operator sees them.
    const QDir classBlock(m_roots.sysfs + QStringLiteral("/class/block"));
    for (const QString &name :
         classBlock.entryList(QDir::Dirs | QDir::NoDotAndDotDot | QDir::System, QDir::Name)) {
        if (mountedDevices.contains(name))
            continue;
        const QString folder = QFileInfo(classBlock.filePath(name)).canonicalFilePath();
        const QStringList devNumbers = readText(folder + QStringLiteral("/dev")).split(QLatin1Char(':'));
        if (devNumbers.size() != 2 || readText(folder + QStringLiteral("/size")).toLongLong() == 0)
            continue;
        const BlockDevice block = blockDevice(m_roots.sysfs, devNumbers[0].toInt(), devNumbers[1].toInt());
        const QStringList entries = QDir(folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
        const bool partitioned = std::any_of(
            entries.begin(), entries.end(), [&name](const QString &entry) { return entry.startsWith(name); });
        if (!block.removable || partitioned)
            continue;
        DriveInfo drive;
        drive.path = drive.device = QStringLiteral("/dev/") + name;
        drive.type = DriveInfo::Removable;
        drives.append(drive);
    }
    return drives;
}
