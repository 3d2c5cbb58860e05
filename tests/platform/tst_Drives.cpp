#include "BoundedSpaceReader.h"
#include "CardSlotTests.h"
#include "FatVariant.h"
#include "FuseImage.h"
#include "LinuxDriveSource.h"
#include "MediaCheck.h"
#include "MountInfo.h"
#include "SystemDrives.h"
#include "TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <sys/mount.h>
#include <unistd.h>

namespace {

constexpr qint64 MiB = 1024 * 1024;

// A little Linux: a mountinfo file, a sysfs tree with its symlinks, and udev's data, in a folder.
class FakeSystem
{
public:
    FakeSystem() { QDir(m_dir.path()).mkpath(QStringLiteral("sys/dev/block")); }

    LinuxSystemRoots roots() const
    {
        return {m_dir.filePath(QStringLiteral("mountinfo")), m_dir.filePath(QStringLiteral("sys")),
                m_dir.filePath(QStringLiteral("udev"))};
    }

    // A block device: `devicePath` is its sysfs folder below sys/devices ("pci/usb1/block/sdb/sdb1").
    void addBlock(const QString &devicePath, int major, int minor, bool removable, qint64 sectors = 131072)
    {
        const QString folder = m_dir.filePath(QStringLiteral("sys/devices/") + devicePath);
        QDir().mkpath(folder);
        const QString name = QFileInfo(folder).fileName();
        const QString disk = QFileInfo(folder).absolutePath();
        const bool partition = QFileInfo(disk).fileName() != QLatin1String("block");
        if (partition) {
            writeTestFile(folder + QStringLiteral("/partition"), "1\n");
            writeTestFile(disk + QStringLiteral("/removable"), removable ? "1\n" : "0\n");
        } else {
            writeTestFile(folder + QStringLiteral("/removable"), removable ? "1\n" : "0\n");
        }
        writeTestFile(folder + QStringLiteral("/dev"),
                      QStringLiteral("%1:%2\n").arg(major).arg(minor).toUtf8());
        writeTestFile(folder + QStringLiteral("/size"), QByteArray::number(sectors) + "\n");
        QFile::link(folder, m_dir.filePath(QStringLiteral("sys/dev/block/%1:%2").arg(major).arg(minor)));
        QDir().mkpath(m_dir.filePath(QStringLiteral("sys/class/block")));
        QFile::link(folder, m_dir.filePath(QStringLiteral("sys/class/block/") + name));
    }

    void addMount(int major, int minor, const QString &escapedMountPoint, const QString &fsType,
                  const QString &source, std::optional<VolumeSpace> space)
    {
        m_mountInfo += QStringLiteral("%1 1 %2:%3 / %4 rw,relatime shared:1 - %5 %6 rw\n")
                           .arg(++m_id)
                           .arg(major)
                           .arg(minor)
                           .arg(escapedMountPoint, fsType, source);
        writeTestFile(m_dir.filePath(QStringLiteral("mountinfo")), m_mountInfo.toUtf8());
        QString unescaped = escapedMountPoint;
        m_space.insert(unescaped.replace(QLatin1String("\\040"), QLatin1String(" ")), space);
    }

    void addUdevVersion(int major, int minor, const QByteArray &version)
    {
        QDir().mkpath(m_dir.filePath(QStringLiteral("udev")));
        writeTestFile(m_dir.filePath(QStringLiteral("udev/b%1:%2").arg(major).arg(minor)),
                      "S:disk/by-uuid/1234\nE:ID_FS_TYPE=vfat\nE:ID_FS_VERSION=" + version + "\n");
    }

    QList<DriveInfo> drives() const
    {
        writeTestFile(m_dir.filePath(QStringLiteral("mountinfo")), m_mountInfo.toUtf8());
        const auto spaces = m_space;
        LinuxDriveSource source(
            roots(), [spaces](const QString &mountPoint) { return spaces.value(mountPoint); },
            [this](const QString &device) { return m_bootSectors.value(device); });
        return source.drives();
    }

    QHash<QString, QByteArray> m_bootSectors;

private:
    QTemporaryDir m_dir;
    QString m_mountInfo;
    QHash<QString, std::optional<VolumeSpace>> m_space;
    int m_id = 20;
};

VolumeSpace spaceOf(qint64 total, quint64 clusters = 0)
{
    return {total, total / 2, total / 2, clusters};
}

// A FAT boot sector with the given geometry.
QByteArray bootSector(quint32 totalSectors, quint8 sectorsPerCluster, quint16 fatSize, quint16 rootEntries)
{
    QByteArray sector(512, '\0');
    auto put = [&](int offset, quint32 value, int size) {
        for (int i = 0; i < size; ++i)
            sector[offset + i] = static_cast<char>((value >> (8 * i)) & 0xFF);
    };
    put(11, 512, 2);
    put(13, sectorsPerCluster, 1);
    put(14, 1, 2);
    put(16, 2, 1);
    put(17, rootEntries, 2);
    if (totalSectors < 65536)
        put(19, totalSectors, 2);
    else
        put(32, totalSectors, 4);
    put(22, fatSize, 2);
    sector[510] = '\x55';
    sector[511] = '\xAA';
    return sector;
}

const DriveInfo *find(const QList<DriveInfo> &drives, const QString &path)
{
    for (const DriveInfo &drive : drives) {
        if (drive.path == path)
            return &drive;
    }
    return nullptr;
}

} // namespace

class tst_Drives : public QObject
{
    Q_OBJECT

private slots:
    void mountInfoUndoesEscapes()
    {
        const QList<MountEntry> mounts = parseMountInfo(QStringLiteral(
            "36 35 179:1 / /media/ann/MY\\040CARD rw,nosuid shared:7 - vfat /dev/mmcblk0p1 rw,fmask=0022\n"
            "broken line\n"
            "40 35 0:45 / /proc rw - proc proc rw\n"));
        QCOMPARE(mounts.size(), 2);
        QCOMPARE(mounts[0].mountPoint, QStringLiteral("/media/ann/MY CARD"));
        QCOMPARE(mounts[0].major, 179);
        QCOMPARE(mounts[0].fsType, QStringLiteral("vfat"));
        QCOMPARE(mounts[0].source, QStringLiteral("/dev/mmcblk0p1"));
    }

    void mountPointEscapes_data()
    {
        QTest::addColumn<QString>("escaped");
        QTest::addColumn<QString>("mountPoint");
        QTest::newRow("blank") << "/media/a\\040b"
                               << "/media/a b";
        QTest::newRow("tab, newline, backslash") << "/m/\\011\\012\\134"
                                                 << "/m/\t\n\\";
        QTest::newRow("escape at the end") << "/m/x\\040"
                                           << "/m/x ";
        QTest::newRow("minus sign") << "/m/\\-01"
                                    << "/m/\\-01";
        QTest::newRow("plus sign") << "/m/\\+12"
                                   << "/m/\\+12";
        QTest::newRow("digit 8") << "/m/\\081"
                                 << "/m/\\081";
        QTest::newRow("cut off") << "/m/\\04"
                                 << "/m/\\04";
        QTest::newRow("more than a byte") << "/m/\\777"
                                          << "/m/\\777";
        QTest::newRow("lone backslash") << "/m/\\"
                                        << "/m/\\";
        QTest::newRow("NUL byte") << "/m/\\000" << QStringLiteral("/m/") + QChar(0);
    }
    void mountPointEscapes()
    {
        QFETCH(QString, escaped);
        QFETCH(QString, mountPoint);
        const QList<MountEntry> mounts
            = parseMountInfo(QStringLiteral("36 35 8:1 / %1 rw - vfat /dev/sdb1 rw\n").arg(escaped));
        QCOMPARE(mounts.size(), 1);
        QCOMPARE(mounts[0].mountPoint, mountPoint);
    }

    void fatKindByClusterCount_data()
    {
        QTest::addColumn<quint64>("clusters");
        QTest::addColumn<QString>("text");
        QTest::newRow("4084") << quint64(4084) << "FAT";
        QTest::newRow("4085") << quint64(4085) << "FAT";
        QTest::newRow("65524") << quint64(65524) << "FAT";
        QTest::newRow("65525") << quint64(65525) << "FAT32";
    }
    void fatKindByClusterCount()
    {
        QFETCH(quint64, clusters);
        QFETCH(QString, text);
        QCOMPARE(FatVariant::fileSystemText(FatVariant::kindFromClusterCount(clusters)), text);
        QCOMPARE(FatVariant::kindFromClusterCount(4084), FatVariant::Fat12);
        QCOMPARE(FatVariant::kindFromClusterCount(4085), FatVariant::Fat16);
    }

    void bootSectorGivesTheClusterCount()
    {
        // 64 MiB with 4 KiB clusters: FAT16 as mkfs.fat makes it.
        const auto clusters = FatVariant::clusterCountFromBootSector(bootSector(131072, 8, 64, 512));
        QVERIFY(clusters.has_value());
        QCOMPARE(*clusters, quint64((131072 - 1 - 128 - 32) / 8));
        QVERIFY(!FatVariant::clusterCountFromBootSector(QByteArray(512, '\0')).has_value());
        QVERIFY(!FatVariant::clusterCountFromBootSector(QByteArray(100, '\0')).has_value());
    }

    void mediaCountVerdict_data()
    {
        QTest::addColumn<unsigned long>("bytes");
        QTest::addColumn<bool>("passes");
        QTest::newRow("11 types") << 264ul << true;
        QTest::newRow("10 types") << 240ul << false;
        QTest::newRow("12 types") << 288ul << false;
        QTest::newRow("failed query") << 0ul << true;
        QTest::newRow("10.5 rounds to 11") << 252ul << true;
    }
    void mediaCountVerdict()
    {
        QFETCH(unsigned long, bytes);
        QFETCH(bool, passes);
        QCOMPARE(modFDCHK::mediaCountPasses(modFDCHK::mediaCountFromBytes(bytes)), passes);
        QCOMPARE(modFDCHK::mediaDescription(11), QStringLiteral("Removable media other than floppy"));
        QCOMPARE(modFDCHK::mediaDescription(23), QStringLiteral("Unknown"));
    }

    void drivesOfALinuxPc()
    {
        FakeSystem pc;
        pc.addBlock(QStringLiteral("platform/mmc/mmc0/block/mmcblk0/mmcblk0p1"), 179, 1, false);
        pc.addMount(179, 1, QStringLiteral("/media/op/SD\\040CARD"), QStringLiteral("vfat"),
                    QStringLiteral("/dev/mmcblk0p1"), spaceOf(64 * MiB));
        pc.addUdevVersion(179, 1, "FAT16");
        pc.addBlock(QStringLiteral("pci/usb1/1-1/host6/block/sdb/sdb1"), 8, 17, false);
        pc.addMount(8, 17, QStringLiteral("/media/op/EXACT"), QStringLiteral("vfat"),
                    QStringLiteral("/dev/sdb1"), spaceOf(CardSlotTests::MaxCardBytes, 32000));
        pc.addBlock(QStringLiteral("pci/usb2/2-1/host7/block/sdc/sdc1"), 8, 33, true);
        pc.addMount(8, 33, QStringLiteral("/media/op/BIG"), QStringLiteral("vfat"),
                    QStringLiteral("/dev/sdc1"), spaceOf(256 * MiB, 60000));
        pc.addBlock(QStringLiteral("pci/usb3/block/sdd/sdd1"), 8, 49, true);
        pc.addMount(8, 49, QStringLiteral("/media/op/F32"), QStringLiteral("vfat"),
                    QStringLiteral("/dev/sdd1"), spaceOf(64 * MiB, 70000));
        pc.addBlock(QStringLiteral("pci/usb4/block/sde/sde1"), 8, 65, true);
        pc.addMount(8, 65, QStringLiteral("/media/op/EX"), QStringLiteral("exfat"),
                    QStringLiteral("/dev/sde1"), spaceOf(64 * MiB));
        pc.addBlock(QStringLiteral("pci/usb5/block/sdf/sdf1"), 8, 81, true);
        pc.m_bootSectors.insert(QStringLiteral("/dev/sdf1"), bootSector(131072, 8, 64, 512));
        pc.addMount(8, 81, QStringLiteral("/media/op/PROBED"), QStringLiteral("vfat"),
                    QStringLiteral("/dev/sdf1"), spaceOf(64 * MiB, 99999));
        pc.addBlock(QStringLiteral("pci/ata1/block/sda/sda1"), 8, 1, false);
        pc.addMount(8, 1, QStringLiteral("/"), QStringLiteral("ext4"), QStringLiteral("/dev/sda1"),
                    spaceOf(100000 * MiB));
        pc.addMount(0, 50, QStringLiteral("/mnt/share"), QStringLiteral("cifs"),
                    QStringLiteral("//srv/voice"), spaceOf(MiB));
        pc.addMount(0, 51, QStringLiteral("/run/shm"), QStringLiteral("tmpfs"), QStringLiteral("tmpfs"),
                    spaceOf(MiB));
        pc.addMount(0, 52, QStringLiteral("/proc"), QStringLiteral("proc"), QStringLiteral("proc"),
                    std::nullopt);
        pc.addBlock(QStringLiteral("pci/usb6/block/sdg"), 8, 96, true); // a card in, not mounted

        const QList<DriveInfo> drives = pc.drives();
        struct Expected
        {
            const char *path;
            int type;
            const char *fileSystem;
            bool qualifies;
        } expected[] = {
            {"/media/op/SD CARD", DriveInfo::Removable, "FAT", true},
            {"/media/op/EXACT", DriveInfo::Removable, "FAT", true},
            {"/media/op/BIG", DriveInfo::Removable, "FAT", false},
            {"/media/op/F32", DriveInfo::Removable, "FAT32", false},
            {"/media/op/EX", DriveInfo::Removable, "exFAT", false},
            {"/media/op/PROBED", DriveInfo::Removable, "FAT", true},
            {"/", DriveInfo::Fixed, "ext4", false},
            {"/mnt/share", DriveInfo::Network, "cifs", false},
            {"/run/shm", DriveInfo::RamDisk, "tmpfs", false},
            {"/dev/sdg", DriveInfo::Removable, "", false},
        };
        QCOMPARE(drives.size(), int(std::size(expected)));
        for (const Expected &e : expected) {
            const DriveInfo *drive = find(drives, QLatin1String(e.path));
            QVERIFY2(drive, e.path);
            QCOMPARE(drive->type, e.type);
            QCOMPARE(drive->fileSystem, QLatin1String(e.fileSystem));
            QVERIFY2(CardSlotTests::qualifies(*drive) == e.qualifies, e.path);
        }
        QVERIFY(!find(drives, QStringLiteral("/dev/sdg"))->ready);
        QCOMPARE(find(drives, QStringLiteral("/media/op/EXACT"))->totalSize, qint64(134'217'728));
    }

    void theImageBehindAFuseFatMount_data()
    {
        QTest::addColumn<QByteArray>("cmdline");
        QTest::addColumn<QString>("cwd");
        QTest::addColumn<QString>("mountPoint");
        QTest::addColumn<QString>("image");
        // fuse blanks out what it took from "-o rw+" in the process's own arguments.
        QTest::newRow("as fusefat shows itself")
            << QByteArrayLiteral("fusefat\0-o\0rw\0\0/cards/b.img\0/media/b\0") << "/"
            << "/media/b"
            << "/cards/b.img";
        QTest::newRow("full program path, debug flag")
            << QByteArrayLiteral("/usr/bin/fusefat\0-d\0/cards/a.img\0/media/a\0") << "/"
            << "/media/a"
            << "/cards/a.img";
        QTest::newRow("relative to its folder")
            << QByteArrayLiteral("fusefat\0img/c.img\0../media/c\0") << "/home/ann"
            << "/home/media/c"
            << "/home/ann/img/c.img";
        QTest::newRow("another mount point") << QByteArrayLiteral("fusefat\0/cards/b.img\0/media/b\0") << "/"
                                             << "/media/x"
                                             << "";
        QTest::newRow("not fusefat") << QByteArrayLiteral("sshfs\0host:/\0/media/b\0") << "/"
                                     << "/media/b"
                                     << "";
    }
    void theImageBehindAFuseFatMount()
    {
        QFETCH(QByteArray, cmdline);
        QFETCH(QString, cwd);
        QFETCH(QString, mountPoint);
        QFETCH(QString, image);
        QTemporaryDir proc;
        QDir(proc.path()).mkpath(QStringLiteral("4711"));
        QDir(proc.path()).mkpath(QStringLiteral("self"));
        writeTestFile(proc.filePath(QStringLiteral("4711/cmdline")), cmdline);
        QVERIFY(QFile::link(cwd, proc.filePath(QStringLiteral("4711/cwd"))));
        writeTestFile(proc.filePath(QStringLiteral("self/cmdline")), "fusefat\0/wrong.img\0/media/b\0");
        QCOMPARE(fuseFatImage(proc.path(), mountPoint), image);
        if (!image.isEmpty())
            QVERIFY(fuseFatServes(proc.path(), image));
    }

    void theWatcherSeesARealMount()
    {
        if (geteuid() != 0)
            QSKIP("mounting a tmpfs needs root");
        QTemporaryDir point;
        DeviceWatcher watcher;
        QSignalSpy changed(&watcher, &DeviceWatcher::devicesChanged);
        if (::mount("tmpfs", QFile::encodeName(point.path()).constData(), "tmpfs", 0, "size=1m") != 0)
            QSKIP("this machine does not allow mounting a tmpfs");
        const auto drives = makeSystemDriveSource();
        const DriveInfo *mounted = nullptr;
        const QList<DriveInfo> list = drives->drives();
        mounted = find(list, point.path());
        QVERIFY(mounted);
        QCOMPARE(mounted->type, int(DriveInfo::RamDisk));
        QVERIFY(changed.wait(5000));
        ::umount(QFile::encodeName(point.path()).constData());
        QVERIFY(changed.wait(5000));
        QVERIFY(!find(drives->drives(), point.path()));
    }

    void aVolumeThatDoesNotAnswerIsNotReady()
    {
        // A dead share or a stuck FUSE server must cost a drive check a moment, not the program.
        if (geteuid() != 0)
            QSKIP("mounting a FUSE file system needs root");
        if (QProcess::execute(QStringLiteral("/usr/bin/python3"),
                              {QStringLiteral("-c"), QStringLiteral("import fusepy")})
            != 0)
            QSKIP("python3-fusepy is not installed");
        QTemporaryDir dir;
        const QString mountPoint = dir.filePath(QStringLiteral("stuck"));
        QVERIFY(QDir().mkpath(mountPoint));
        QProcess server;
        server.start(QStringLiteral("/usr/bin/python3"),
                     {QStringLiteral(DQ480_TEST_SUPPORT "/stalled_fs.py"), mountPoint});
        const auto mounted = [&] {
            QFile table(QStringLiteral("/proc/self/mountinfo"));
            return table.open(QIODevice::ReadOnly)
                && table.readAll().contains(" " + QFile::encodeName(mountPoint) + " ");
        };
        QTRY_VERIFY_WITH_TIMEOUT(mounted(), 10000);

        const LinuxDriveSource::SpaceReader space = boundedSpaceReader(std::chrono::milliseconds(300));
        QElapsedTimer clock;
        clock.start();
        QCOMPARE(space(mountPoint).has_value(), false);
        QVERIFY2(clock.elapsed() < 5000, "the check waited for the stuck volume");
        clock.restart();
        QCOMPARE(space(mountPoint).has_value(), false); // still waiting: not asked twice
        QVERIFY(clock.elapsed() < 5000);
        QVERIFY(space(dir.path()).has_value()); // a volume that answers still does

        QProcess::execute(QStringLiteral("umount"), {QStringLiteral("-l"), mountPoint});
        server.kill();
        server.waitForFinished();
    }
};

QTEST_GUILESS_MAIN(tst_Drives)
#include "tst_Drives.moc"
