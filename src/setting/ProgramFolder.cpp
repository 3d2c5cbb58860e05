#include "ProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QStandardPaths>

QString resolveProgramFolder()
{
    QString folder = qEnvironmentVariable("DQ480_HOME");
    if (folder.isEmpty()) {
#ifdef Q_OS_WIN
        folder = QCoreApplication::applicationDirPath();
#else
        folder = QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
#endif
    }
    QDir().mkpath(folder);
    return QDir::toNativeSeparators(QDir(folder).absolutePath());
}
