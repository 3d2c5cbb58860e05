#pragma once

#include "format/FatLayout.h"
#include "platform/DriveInfo.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QProcess>
#include <QStringList>

/// Formats the card behind a drive as FAT in the background, so the format dialog stays drawn:
/// FAT16 with a cluster that fits the card, FAT12 on a card too small for FAT16.
/// Linux: through UDisks2 where the desktop runs it (no root needed), else the volume is unmounted,
/// given its file system with mkfs.fat (which needs root) and mounted back; a card image file is
/// formatted in place. A format that fails still mounts the card back as it was. Windows: the
/// system's format command. Linux checks the result is the FAT chosen.
class UDisksFormat;

class CardFormatter : public QObject
{
    Q_OBJECT

public:
    explicit CardFormatter(QObject *parent = nullptr);

    /// Starts; false with `error` when the format cannot start at all.
    bool start(const DriveInfo &drive, QString &error);

    /// Where the card is mounted after the format; UDisks2 may mount it elsewhere than before.
    QString mountPoint() const { return m_mountPoint; }

signals:
    /// The format ended; on failure `error` says why.
    void finished(bool ok, const QString &error);

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
