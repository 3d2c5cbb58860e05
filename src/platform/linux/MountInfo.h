#pragma once

#include <QList>
#include <QString>

/// One line of /proc/self/mountinfo.
struct MountEntry
{
    int major = 0;
    int minor = 0;
    QString mountPoint; // with the kernel's octal escapes (\040 for a blank) undone
    QString fsType;
    QString source;
};

/// The mounts of a mountinfo text; malformed lines are skipped.
QList<MountEntry> parseMountInfo(const QString &text);
