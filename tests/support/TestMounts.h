#pragma once

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <memory>
#include <sys/mount.h>
#include <unistd.h>

/// A real file system mounted on a fresh folder for one test (a tmpfs, or a FAT16 image through
/// fusefat) and unmounted when the object goes. `skipReason` says why one could not be made:
/// mounting needs root, and the FAT tools must be installed.
class TestMount
{
public:
    /// A tmpfs of `size` (mount's size option, e.g. "16k").
    static std::unique_ptr<TestMount> tmpfs(const QByteArray &size, QString &skipReason)
    {
        auto mount = std::unique_ptr<TestMount>(new TestMount);
        if (geteuid() != 0
            || ::mount("tmpfs", QFile::encodeName(mount->path()).constData(), "tmpfs", 0, "size=" + size)
                != 0) {
            skipReason = QStringLiteral("mounting a tmpfs needs root and a machine that allows it");
            return nullptr;
        }
        mount->m_mounted = true;
        return mount;
    }

    /// A FAT16 card image of `kib` KiB, mounted writable through fusefat.
    static std::unique_ptr<TestMount> fat16(int kib, QString &skipReason)
    {
        auto mount = std::unique_ptr<TestMount>(new TestMount);
        if (geteuid() != 0 || QStandardPaths::findExecutable(QStringLiteral("mkfs.fat")).isEmpty()
            || QStandardPaths::findExecutable(QStringLiteral("fusefat")).isEmpty()) {
            skipReason = QStringLiteral("a FAT image through FUSE needs root, mkfs.fat and fusefat");
            return nullptr;
        }
        mount->m_image = mount->m_imageDir.filePath(QStringLiteral("card.img"));
        // Small clusters keep a small image FAT16; a large one needs larger clusters to stay below
        // FAT16's cluster limit.
        int sectorsPerCluster = 1;
        while (kib * 2 / sectorsPerCluster > 65000)
            sectorsPerCluster *= 2;
        if (!runQuietly(QStringLiteral("mkfs.fat"),
                        {QStringLiteral("-C"), QStringLiteral("-F"), QStringLiteral("16"),
                         QStringLiteral("-s"), QString::number(sectorsPerCluster), mount->m_image,
                         QString::number(kib)})
            || !mount->mountImage()) {
            skipReason = QStringLiteral("mkfs.fat or a FUSE mount failed on this machine");
            return nullptr;
        }
        return mount;
    }

    ~TestMount() { unmount(); }

    QString path() const { return m_dir.path(); }
    QString filePath(const QString &name) const { return m_dir.filePath(name); }
    QString imagePath() const { return m_image; }

    /// Mounts the FAT image again after an unmount, to see what the card kept; read-only as a card
    /// with its lock switch set is.
    bool mountImage(bool readOnly = false)
    {
        m_mounted = runQuietly(
            QStringLiteral("fusefat"),
            {QStringLiteral("-o"), readOnly ? QStringLiteral("ro") : QStringLiteral("rw+"), m_image, path()});
        return m_mounted;
    }

    /// Makes a mounted tmpfs read-only from now on, with what it holds.
    bool makeReadOnly()
    {
        return ::mount(nullptr, QFile::encodeName(path()).constData(), nullptr, MS_REMOUNT | MS_RDONLY,
                       nullptr)
            == 0;
    }

    /// Takes the file system away at once, as a pulled card: files still open go on to a
    /// detached file system, new paths lead to the empty folder below.
    void pull()
    {
        if (m_mounted)
            ::umount2(QFile::encodeName(path()).constData(), MNT_DETACH);
        m_mounted = false;
    }

    void unmount()
    {
        if (!m_mounted)
            return;
        if (::umount(QFile::encodeName(path()).constData()) != 0)
            ::umount2(QFile::encodeName(path()).constData(), MNT_DETACH);
        m_mounted = false;
    }

    /// Fills the file system up to its last byte with a file named `name`.
    void fill(const QString &name = QStringLiteral("filler"))
    {
        QFile filler(filePath(name));
        if (!filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
            return;
        const QByteArray block(4096, 'f');
        while (filler.write(block) == block.size()) { }
        const QByteArray byte(1, 'f');
        while (filler.write(byte) == 1) { }
    }

private:
    TestMount() = default;

    static bool runQuietly(const QString &program, const QStringList &args)
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start(program, args);
        return process.waitForFinished(30000) && process.exitStatus() == QProcess::NormalExit
            && process.exitCode() == 0;
    }

    QTemporaryDir m_dir;
    QTemporaryDir m_imageDir;
    QString m_image;
    bool m_mounted = false;
};

/// The rest of a scope run as an unprivileged user (nobody), for whom permissions count as they do
/// for an operator; root comes back at its end. `active()` is false when the test does not run as root.
class AsUnprivilegedUser
{
public:
    AsUnprivilegedUser()
        : m_active(geteuid() == 0 && ::setegid(Nobody) == 0 && ::seteuid(Nobody) == 0)
    {
        if (!m_active && geteuid() == 0 && ::setegid(0) != 0)
            qFatal("cannot take root's group back");
    }
    ~AsUnprivilegedUser()
    {
        if (m_active && (::seteuid(0) != 0 || ::setegid(0) != 0))
            qFatal("cannot become root again");
    }
    AsUnprivilegedUser(const AsUnprivilegedUser &) = delete;
    AsUnprivilegedUser &operator=(const AsUnprivilegedUser &) = delete;
    bool active() const { return m_active; }

    static constexpr uid_t Nobody = 65534;

private:
    bool m_active;
};
