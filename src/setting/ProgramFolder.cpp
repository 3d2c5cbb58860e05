#include "ProgramFolder.h"

#include "OsProgramFolder.h"

#include <QDir>

QString resolveProgramFolder()
{
    QString folder = qEnvironmentVariable("DQ480_HOME");
    if (folder.isEmpty())
        folder = defaultProgramFolder();
    QDir().mkpath(folder);
    return QDir::toNativeSeparators(QDir(folder).absolutePath());
}
