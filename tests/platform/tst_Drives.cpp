#include "platform/CardSlotCriteria.h"
#include "platform/FatVariant.h"
#include "platform/linux/BoundedSpaceReader.h"
#include "platform/linux/LinuxDriveSource.h"
#include "support/TestFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>
#include <QtEndian>

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

bool runQuietly(const QString &program, const QStringList &args)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, args);
    return process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0;
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
    void drivesOfALinuxPc()
    {
        FakeSystem pc;
        pc.addBlock(QStringLiteral("platform/mmc/mmc0/block/mmcblk0/mmcblk0p1"), 179, 1, false);
        pc.addMount(179, 1, QStringLiteral("/media/op/SD\\040CARD"), QStringLiteral("vfat"),
                    QStringLiteral("/dev/mmcblk0p1"), spaceOf(64 * MiB));
        pc.addUdevVersion(179, 1, "FAT16");
        pc.addBlock(QStringLiteral("pci/usb1/1-1/host6/block/sdb/sdb1"), 8, 17, false);
        pc.addMount(8, 17, QStringLiteral("/media/op/EXACT"), QStringLiteral("vfat"),
                    QStringLiteral("/dev/sdb1"), spaceOf(CardSlotCriteria::MaxCardBytes, 32000));
        pc.addBlock(QStringLiteral("pci/usb2/2-1/host7/block/sdc/sdc1"), 8, 33, true);
        pc.addMount(8, 33, QStringLiteral("/media/op/BIG"), QStringLiteral("vfat"),
                    QStringLiteral("/dev/sdc1"), spaceOf(256 * MiB, 60000));
        pc.addBlock(QStringLiteral("pci/usb3/block/sdd/sdd1"), 8, 49, true);
        pc.addMount(8, 49, QStringLiteral("/media/op/F32"), QStringLiteral("vfat"),
                    QStringLiteral("/dev/sdd1"), spaceOf(64 * MiB, 70000));
        pc.addBlock(QStringLiteral("pci/ata1/block/sda/sda1"), 8, 1, false);
        pc.addMount(8, 1, QStringLiteral("/"), QStringLiteral("ext4"), QStringLiteral("/dev/sda1"),
                    spaceOf(100000 * MiB));
        pc.addMount(0, 50, QStringLiteral("/mnt/share"), QStringLiteral("cifs"),
                    QStringLiteral("//srv/voice"), spaceOf(MiB));
        pc.addBlock(QStringLiteral("pci/usb6/block/sdg"), 8, 96, true); // a card in, not mounted
        pc.addBlock(QStringLiteral("pci/usb7/block/sdh"), 8, 112, true); // its partition is listed, not it
        pc.addBlock(QStringLiteral("pci/usb7/block/sdh/sdh1"), 8, 113, true);

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
            {"/", DriveInfo::Fixed, "ext4", false},
            {"/mnt/share", DriveInfo::Network, "cifs", false},
            {"/dev/sdg", DriveInfo::Removable, "", false},
            {"/dev/sdh1", DriveInfo::Removable, "", false},
        };
        QCOMPARE(drives.size(), int(std::size(expected)));
        for (const Expected &e : expected) {
            const DriveInfo *drive = find(drives, QLatin1String(e.path));
            QVERIFY2(drive, e.path);
            QCOMPARE(drive->type, e.type);
            QCOMPARE(drive->fileSystem, QLatin1String(e.fileSystem));
            QVERIFY2(CardSlotCriteria::qualifies(*drive) == e.qualifies, e.path);
        }
        QVERIFY(!find(drives, QStringLiteral("/dev/sdg"))->ready);
        QCOMPARE(find(drives, QStringLiteral("/media/op/EXACT"))->totalSize, qint64(134'217'728));
    }

    // Cards formatted elsewhere, as mkfs.fat makes them at the FAT boundaries (it makes no FAT16 of
    // fewer than 4087 clusters, so 4085 is such a card cut by two sectors, which fsck.fat and
    // fusefat still take as FAT16): the boot sector and the mounted card give the FAT their
    // clusters say.
    void fatImagesAtTheBoundaries_data()
    {
        QTest::addColumn<QString>("bits");
        QTest::addColumn<int>("sectors");
        QTest::addColumn<int>("cut");
        QTest::addColumn<quint64>("clusters");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("shown");
        QTest::newRow("4084") << "12" << 4141 << 0 << quint64(4084) << int(FatVariant::Fat12) << "FAT";
        QTest::newRow("4085") << "16" << 4152 << 2 << quint64(4085) << int(FatVariant::Fat16) << "FAT";
        QTest::newRow("65524") << "16" << 66069 << 0 << quint64(65524) << int(FatVariant::Fat16) << "FAT";
        QTest::newRow("65525") << "32" << 66581 << 0 << quint64(65525) << int(FatVariant::Fat32) << "FAT32";
    }
    void fatImagesAtTheBoundaries()
    {
        QFETCH(QString, bits);
        QFETCH(int, sectors);
        QFETCH(int, cut);
        QFETCH(quint64, clusters);
        QFETCH(int, kind);
        QFETCH(QString, shown);
        if (geteuid() != 0 || QStandardPaths::findExecutable(QStringLiteral("mkfs.fat")).isEmpty()
            || QStandardPaths::findExecutable(QStringLiteral("fusefat")).isEmpty())
            QSKIP("a FAT image through FUSE needs root, mkfs.fat and fusefat");
        QTemporaryDir dir;
        const QString image = dir.filePath(QStringLiteral("card.img"));
        QFile file(image);
        QVERIFY(file.open(QIODevice::ReadWrite) && file.resize(qint64(sectors) * 512));
        // One sector per cluster and per track, so that the size alone sets the cluster count.
        QVERIFY(runQuietly(QStringLiteral("mkfs.fat"),
                           {QStringLiteral("-F"), bits, QStringLiteral("-s"), QStringLiteral("1"),
                            QStringLiteral("-g"), QStringLiteral("1/1"), image}));
        QByteArray boot = file.read(512);
        if (cut) { // the 16-bit sector count of a small volume
            qToLittleEndian<quint16>(quint16(sectors - cut), boot.data() + 19);
            QVERIFY(file.seek(0) && file.write(boot) == 512 && file.resize(qint64(sectors - cut) * 512));
        }
        file.close();
        QCOMPARE(FatVariant::clusterCountFromBootSector(boot), std::optional(clusters));
        QCOMPARE(int(FatVariant::kindFromClusterCount(clusters)), kind);

        const QString mountPoint = dir.filePath(QStringLiteral("card"));
        QVERIFY(QDir().mkpath(mountPoint));
        if (!runQuietly(QStringLiteral("fusefat"),
                        {QStringLiteral("-o"), QStringLiteral("rw+"), image, mountPoint}))
            QSKIP("this machine does not allow FUSE mounts");
        const std::optional<VolumeSpace> space = LinuxDriveSource::statvfsSpace(mountPoint);
        const QList<DriveInfo> drives = LinuxDriveSource().drives();
        runQuietly(QStringLiteral("fusermount"), {QStringLiteral("-u"), mountPoint});
        QVERIFY(space);
        QCOMPARE(space->files, clusters);
        const DriveInfo *card = find(drives, mountPoint);
        QVERIFY(card);
        QCOMPARE(card->fileSystem, shown);
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
