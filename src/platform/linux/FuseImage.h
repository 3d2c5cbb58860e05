#pragma once

#include <QHash>
#include <QString>

/// The image files behind the fusefat mounts, by mount point. The mount table names only "fusefat"
/// as the source, so each is read from the command line of the fusefat process under `procRoot`
/// ("/proc") that serves it.
QHash<QString, QString> fuseFatImages(const QString &procRoot);

/// True while a fusefat process serves `image`. It goes on writing for a moment after its unmount.
bool fuseFatServes(const QString &procRoot, const QString &image);
