#include "platform/os/OsProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>

QString defaultProgramFolder()
{
#ifdef Q_OS_WIN
    const QString programFolder = QCoreApplication::applicationDirPath();
    if (QFileInfo::exists(QDir(programFolder).filePath(QLatin1String(PortableMarkerName))))
        return programFolder;
#endif
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation);
}
