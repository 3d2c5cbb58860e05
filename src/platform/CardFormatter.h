#pragma once

#include "platform/DriveInfo.h"

#include <QObject>
#include <QString>

/// Formats the card behind a drive as FAT in the background, so the format dialog stays drawn,
/// each system its own way (the build picks the one for the system it is made for):
/// - Linux: FAT16 with a cluster that fits the card, FAT12 on a card too small for FAT16, through
///   UDisks2 where the desktop runs it (no root needed), else the volume is unmounted, given its
///   file system with mkfs.fat (which needs root) and mounted back; a card image file is formatted
///   in place. A format that fails still mounts the card back as it was; the result is checked to
///   be the FAT chosen.
/// - Windows: the system's format command, hidden, with its answer file.
class CardFormatter : public QObject
{
    Q_OBJECT

public:
    /// The formatter of the system the program runs on.
    static CardFormatter *create(QObject *parent = nullptr);

    /// Starts; false with `error` when the format cannot start at all.
    virtual bool start(const DriveInfo &drive, QString &error) = 0;

    /// Where the card is mounted after the format (UDisks2 may mount it elsewhere than before);
    /// empty where a drive keeps its path.
    virtual QString mountPoint() const { return QString(); }

signals:
    /// The format ended; on failure `error` says why.
    void finished(bool ok, const QString &error);

protected:
    explicit CardFormatter(QObject *parent)
        : QObject(parent)
    { }
};
