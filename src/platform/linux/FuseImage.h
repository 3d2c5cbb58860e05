#pragma once

#include <QString>

/// The image file behind a fusefat mount. The mount table names only "fusefat" as the source, so
/// it is read from the command line of the fusefat process that serves `mountPoint`. Empty when no
/// such process is found under `procRoot` ("/proc").
QString fuseFatImage(const QString &procRoot, const QString &mountPoint);

/// True while a fusefat process serves `image`. It goes on writing for a moment after its unmount.
bool fuseFatServes(const QString &procRoot, const QString &image);
