#pragma once

#include "DriveInfo.h"

#include <QDeadlineTimer>
#include <QObject>
#include <QProcess>
#include <QStringList>

/// Formats the card behind a drive as FAT16 in the background, so the format dialog stays drawn.
/// Linux: through UDisks2 where the desktop runs it (no root needed), else the volume is unmounted,
/// given a FAT16 file system with mkfs.fat (which needs root) and mounted back; a card image file
/// is formatted in place. Windows: the system's format command. Linux checks the result is FAT16.
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
    void runNext();
    void checkFat16(const QString &fileSystemSeen);
    void fail(const QString &error);

    QProcess m_process;
    QDeadlineTimer m_letGo; // how long an unmounted card image may still be held
    QList<QStringList> m_steps; // program and arguments, in order
    QString m_device;
    QString m_mountPoint;
};
