#include "platform/CardFormatter.h"

#include "platform/FatLayout.h"
#include "platform/FatVariant.h"
#include "platform/SystemDrives.h"
#include "platform/linux/FuseImage.h"
#include "platform/linux/UDisksFormat.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QStringList>
#include <QTimer>

#include <fcntl.h>
#include <unistd.h>
#include <utility>

namespace {

// The whole size of the card: an image's length, a block device's from sysfs (readable without
// rights to the device), else from the device itself.
qint64 deviceBytes(const QString &device)
{
    const QFileInfo info(device);
    if (info.isFile())
        return info.size();
    QFile sysfs(
        QStringLiteral("/sys/class/block/%1/size").arg(QFileInfo(info.canonicalFilePath()).fileName()));
    if (sysfs.open(QIODevice::ReadOnly)) {
        bool ok = false;
        const qint64 sectors = sysfs.readAll().trimmed().toLongLong(&ok);
        if (ok)
            return sectors * 512;
    }
    const int fd = ::open(QFile::encodeName(device).constData(), O_RDONLY | O_CLOEXEC);
    if (fd < 0)
        return 0;
    const off_t end = ::lseek(fd, 0, SEEK_END);
    ::close(fd);
    return end > 0 ? qint64(end) : 0;
}

// mkfs.fat in a row of steps (unmount, format, mount back), or UDisks2 doing the same.
class LinuxCardFormatter : public CardFormatter
{
public:
    explicit LinuxCardFormatter(QObject *parent);

    bool start(const DriveInfo &drive, QString &error) override;
    QString mountPoint() const override { return m_mountPoint; }

private:
    enum class Role { Unmount, Format, Mount };
    struct Step
    {
        Role role;
        QStringList command; // program and arguments
    };

    void stepEnded(bool ok);
    void runNext();
    void checkFat(const QString &fileSystemSeen);
    /// Ends with `error`; a card already unmounted is mounted back first.
    void fail(const QString &error);

    QProcess m_process;
    QDeadlineTimer m_letGo; // how long the card may stay busy, or its unmounted image still held
    QList<Step> m_steps; // in order
    Role m_running = Role::Unmount;
    Step m_mountBack {Role::Mount, {}};
    bool m_unmounted = false;
    QString m_failure; // set while the card is mounted back after a failure
    FatLayout m_layout;
    bool m_image = false;
    QString m_device;
    QString m_mountPoint;
};

} // namespace

CardFormatter *CardFormatter::create(QObject *parent)
{
    return new LinuxCardFormatter(parent);
}

LinuxCardFormatter::LinuxCardFormatter(QObject *parent)
    : CardFormatter(parent)
{
    connect(&m_process, &QProcess::finished, this, [this](int exitCode, QProcess::ExitStatus status) {
        stepEnded(status == QProcess::NormalExit && exitCode == 0);
    });
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error != QProcess::FailedToStart)
            return;
        const QString failure = QCoreApplication::translate("CardFormatter", "%1 could not be started: %2")
                                    .arg(m_process.program(), m_process.errorString());
        if (!m_failure.isEmpty())
            emit finished(false, std::exchange(m_failure, QString()) + QLatin1Char('\n') + failure);
        else
            fail(failure);
    });
}

void LinuxCardFormatter::stepEnded(bool ok)
{
    if (!m_failure.isEmpty()) {
        // The card is back where it was (or could not be put back); the format failed either way.
        QString failure = std::exchange(m_failure, QString());
        if (!ok)
            failure += QLatin1Char('\n')
                + QCoreApplication::translate("CardFormatter", "The card could not be mounted again at %1.")
                      .arg(m_mountPoint);
        emit finished(false, failure);
        return;
    }
    // A volume being looked at that moment (a file manager, a drive list) is busy for a moment;
    // only one that stays busy is a failure.
    if (!ok && m_running == Role::Unmount && !m_letGo.hasExpired()) {
        m_steps.prepend(Step {Role::Unmount, QStringList {m_process.program()} + m_process.arguments()});
        QTimer::singleShot(200, this, &LinuxCardFormatter::runNext);
        return;
    }
    // A mount that failed is not tried a second time as the mount back.
    if (m_running == Role::Mount)
        m_unmounted = false;
    if (!ok) {
        const QString output = QString::fromLocal8Bit(m_process.readAllStandardError()).trimmed();
        fail(m_running == Role::Format
                 ? QCoreApplication::translate("CardFormatter",
                                               "The card %1 could not be formatted.\n%2 said: %3")
                       .arg(m_device, m_process.program(), output)
                 : QCoreApplication::translate("CardFormatter", "%1 failed. %2")
                       .arg(m_process.program(), output));
        return;
    }
    if (m_running == Role::Unmount)
        m_unmounted = true;
    runNext();
}

void LinuxCardFormatter::fail(const QString &error)
{
    m_steps.clear();
    if (m_unmounted && !m_mountBack.command.isEmpty()) {
        m_unmounted = false;
        m_failure = error;
        m_steps << m_mountBack;
        runNext();
        return;
    }
    emit finished(false, error);
}

bool LinuxCardFormatter::start(const DriveInfo &drive, QString &error)
{
    const bool image = QFileInfo(drive.device).isFile();
    if (!image && !drive.device.startsWith(QLatin1String("/dev/"))) {
        error = QCoreApplication::translate("CardFormatter", "%1 is not a disk that can be formatted here.")
                    .arg(drive.path);
        return false;
    }
    m_device = drive.device;
    m_mountPoint = drive.path;
    m_image = image;
    const std::optional<FatLayout> layout = FatLayout::forCardSize(deviceBytes(drive.device));
    if (!layout) {
        error = QCoreApplication::translate("CardFormatter",
                                            "The card %1 is too small or too large for a FAT file system.")
                    .arg(drive.device);
        return false;
    }
    m_layout = *layout;
    if (!image && UDisksFormat::available()) {
        auto *udisks = new UDisksFormat(this);
        connect(udisks, &UDisksFormat::finished, this, [this, udisks](bool ok, const QString &failure) {
            udisks->deleteLater();
            if (!udisks->mountPoint().isEmpty())
                m_mountPoint = udisks->mountPoint();
            if (!ok) {
                emit finished(false, failure);
                return;
            }
            QString seen;
            for (const DriveInfo &mounted : makeSystemDriveSource()->drives()) {
                if (mounted.path == m_mountPoint)
                    seen = mounted.fileSystem;
            }
            checkFat(seen);
        });
        udisks->start(drive.device, m_layout.mkfsOptions());
        return true;
    }
    if (!image && geteuid() != 0) {
        error = QCoreApplication::translate("CardFormatter",
                                            "Formatting %1 needs administrator rights: run the program as "
                                            "root, or format the card as FAT16 with the desktop's disk tool.")
                    .arg(drive.device);
        return false;
    }
    m_steps.clear();
    m_unmounted = false;
    m_letGo = QDeadlineTimer(10'000);
    // A card image mounted with fusefat is let go and served again afterwards, as a card is.
    const bool fuseMounted = image && drive.ready;
    if (!image) {
        m_steps << Step {Role::Unmount, {QStringLiteral("umount"), drive.path}};
        m_mountBack = Step {Role::Mount, {QStringLiteral("mount"), drive.device, drive.path}};
    } else if (fuseMounted) {
        m_steps << Step {Role::Unmount, {QStringLiteral("fusermount"), QStringLiteral("-u"), drive.path}};
        m_mountBack = Step {Role::Mount,
                            {QStringLiteral("fusefat"), QStringLiteral("-o"), QStringLiteral("rw+"),
                             drive.device, drive.path}};
    }
    // A card without partitions is a whole device, which mkfs.fat only formats when told to.
    const QStringList whole = image ? QStringList() : QStringList {QStringLiteral("-I")};
    m_steps << Step {Role::Format,
                     QStringList {QStringLiteral("mkfs.fat")} + m_layout.mkfsOptions() + whole
                         + QStringList {QStringLiteral("-n"), QStringLiteral("DQ480"), drive.device}};
    if (!m_mountBack.command.isEmpty())
        m_steps << m_mountBack;
    runNext();
    return true;
}

// The card must now hold the FAT it was given, whatever the tools said: its boot sector tells where
// it can be read; else the file system the mounted volume shows ("FAT" is FAT12 or FAT16).
void LinuxCardFormatter::checkFat(const QString &fileSystemSeen)
{
    QFile device(m_device);
    const QByteArray sector = device.open(QIODevice::ReadOnly) ? device.read(512) : QByteArray();
    const auto clusters = FatVariant::clusterCountFromBootSector(sector);
    const bool given = clusters ? FatVariant::kindFromClusterCount(*clusters) == m_layout.kind
                                : fileSystemSeen == QLatin1String("FAT");
    if (given)
        emit finished(true, QString());
    else
        emit finished(
            false,
            QCoreApplication::translate("CardFormatter", "%1 did not receive a FAT%2 file system.")
                .arg(m_device,
                     m_layout.kind == FatVariant::Fat12 ? QStringLiteral("12") : QStringLiteral("16")));
}

void LinuxCardFormatter::runNext()
{
    if (m_steps.isEmpty()) {
        checkFat(QString());
        return;
    }
    // fusefat writes its last sectors after its unmount: formatting under it, or serving the
    // image again, must wait until it has let go.
    if (m_image && m_steps.first().role != Role::Unmount
        && fuseFatServes(QStringLiteral("/proc"), m_device)) {
        if (!m_letGo.hasExpired()) {
            QTimer::singleShot(50, this, &LinuxCardFormatter::runNext);
            return;
        }
        const QString inUse
            = QCoreApplication::translate("CardFormatter", "%1 is still in use.").arg(m_device);
        if (m_failure.isEmpty())
            fail(inUse);
        else
            emit finished(false, std::exchange(m_failure, QString()) + QLatin1Char('\n') + inUse);
        return;
    }
    const Step step = m_steps.takeFirst();
    m_running = step.role;
    m_process.start(step.command.first(), step.command.mid(1));
}
