#include "CardFormatter.h"

#include "FatVariant.h"
#include "SystemDrives.h"
#include "UDisksFormat.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include "FuseImage.h"
#include <QTimer>
#include <unistd.h>
#endif
#ifdef Q_OS_WIN
#include "WinFormat.h"
#include "WindowsFormatLaunch.h"
#include <QTimer>
#endif

CardFormatter::CardFormatter(QObject *parent)
    : QObject(parent)
{
    connect(&m_process, &QProcess::finished, this, [this](int exitCode, QProcess::ExitStatus status) {
        if (status != QProcess::NormalExit || exitCode != 0) {
            const QString output = QString::fromLocal8Bit(m_process.readAllStandardError()).trimmed();
            fail(QCoreApplication::translate("CardFormatter", "%1 failed. %2")
                     .arg(m_process.program(), output));
            return;
        }
        runNext();
    });
    connect(&m_process, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart)
            fail(QCoreApplication::translate("CardFormatter", "%1 could not be started: %2")
                     .arg(m_process.program(), m_process.errorString()));
    });
}

void CardFormatter::fail(const QString &error)
{
    m_steps.clear();
    emit finished(false, error);
}

bool CardFormatter::start(const DriveInfo &drive, QString &error)
{
#ifdef Q_OS_WIN
    const WindowsFormatLaunch launch = windowsFormatLaunch(drive);
    if (!writeFormatAnswers(launch, error))
        return false;
    void *process = winStartHidden(launch.commandLine.toStdString());
    if (!process) {
        error = QCoreApplication::translate("CardFormatter", "The format command could not be started.");
        return false;
    }
    auto *poll = new QTimer(this);
    connect(poll, &QTimer::timeout, this, [this, poll, process] {
        if (!winProcessEnded(process, 100))
            return;
        poll->deleteLater();
        winCloseProcess(process);
        emit finished(true, QString());
    });
    poll->start(100);
    return true;
#else
    const bool image = QFileInfo(drive.device).isFile();
    if (!image && !drive.device.startsWith(QLatin1String("/dev/"))) {
        error = QCoreApplication::translate("CardFormatter", "%1 is not a disk that can be formatted here.")
                    .arg(drive.path);
        return false;
    }
    m_device = drive.device;
    m_mountPoint = drive.path;
    if (!image && UDisksFormat::available()) {
        auto *udisks = new UDisksFormat(this);
        connect(udisks, &UDisksFormat::finished, this, [this, udisks](bool ok, const QString &failure) {
            udisks->deleteLater();
            if (!ok) {
                emit finished(false, failure);
                return;
            }
            if (!udisks->mountPoint().isEmpty())
                m_mountPoint = udisks->mountPoint();
            QString seen;
            for (const DriveInfo &mounted : makeSystemDriveSource()->drives()) {
                if (mounted.path == m_mountPoint)
                    seen = mounted.fileSystem;
            }
            checkFat16(seen);
        });
        udisks->start(drive.device);
        return true;
    }
    if (!image && geteuid() != 0) {
        error = QStringLiteral("Formatting %1 needs administrator rights: run the program as root, or format "
                               "the card as FAT16 with the desktop's disk tool.")
                    .arg(drive.device);
        return false;
    }
    m_steps.clear();
    m_letGo = QDeadlineTimer(10'000);
    // A card image mounted with fusefat is let go and served again afterwards, as a card is.
    const bool fuseMounted = image && drive.ready;
    if (!image)
        m_steps << QStringList {QStringLiteral("umount"), drive.path};
    else if (fuseMounted)
        m_steps << QStringList {QStringLiteral("fusermount"), QStringLiteral("-u"), drive.path};
    m_steps << QStringList {QStringLiteral("mkfs.fat"), QStringLiteral("-F"),    QStringLiteral("16"),
                            QStringLiteral("-n"),       QStringLiteral("DQ480"), drive.device};
    if (!image)
        m_steps << QStringList {QStringLiteral("mount"), drive.device, drive.path};
    else if (fuseMounted)
        m_steps << QStringList {QStringLiteral("fusefat"), QStringLiteral("-o"), QStringLiteral("rw+"),
                                drive.device, drive.path};
    runNext();
    return true;
#endif
}

// The card must now hold FAT16, whatever the tools said: its boot sector tells where it can be
// read; else the file system the mounted volume shows ("FAT" is FAT12 or FAT16).
void CardFormatter::checkFat16(const QString &fileSystemSeen)
{
    QFile device(m_device);
    const QByteArray sector = device.open(QIODevice::ReadOnly) ? device.read(512) : QByteArray();
    const auto clusters = FatVariant::clusterCountFromBootSector(sector);
    const bool fat16 = clusters ? FatVariant::kindFromClusterCount(*clusters) == FatVariant::Fat16
                                : fileSystemSeen == QLatin1String("FAT");
    if (fat16)
        emit finished(true, QString());
    else
        emit finished(false,
                      QCoreApplication::translate("CardFormatter", "%1 did not receive a FAT16 file system.")
                          .arg(m_device));
}

void CardFormatter::runNext()
{
    if (m_steps.isEmpty()) {
        checkFat16(QString());
        return;
    }
#ifndef Q_OS_WIN
    // fusefat writes its last sectors after its unmount: formatting under it would be overwritten.
    if (m_steps.first().first() == QLatin1String("mkfs.fat")
        && fuseFatServes(QStringLiteral("/proc"), m_device)) {
        if (m_letGo.hasExpired())
            fail(QCoreApplication::translate("CardFormatter", "%1 is still in use.").arg(m_device));
        else
            QTimer::singleShot(50, this, &CardFormatter::runNext);
        return;
    }
#endif
    const QStringList step = m_steps.takeFirst();
    m_process.start(step.first(), step.mid(1));
}
