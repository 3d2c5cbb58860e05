#include "setting/ProgramFolder.h"

#include "platform/os/OsProgramFolder.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

QString resolveProgramFolder()
{
    QString folder = qEnvironmentVariable("DQ480_HOME");
    if (folder.isEmpty())
        folder = defaultProgramFolder();
    QDir().mkpath(folder);
    return QDir::toNativeSeparators(QDir(folder).absolutePath());
}

QString programFolderProblem(const QString &folder)
{
    const QString consequence = QCoreApplication::translate(
        "ProgramFolder",
        "Until it can be written, sentences cannot be added to projects and the card's test tone "
        "cannot be made.");
    if (!QFileInfo(folder).isDir())
        return QCoreApplication::translate("ProgramFolder",
                                           "The program folder %1 does not exist and cannot be made.")
                   .arg(folder)
            + QLatin1Char('\n') + consequence;
    QFile probe(QDir(folder).filePath(
        QStringLiteral(".dq480-write-test-%1").arg(QCoreApplication::applicationPid())));
    if (!probe.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return QCoreApplication::translate("ProgramFolder", "The program folder %1 cannot be written: %2.")
                   .arg(folder, probe.errorString())
            + QLatin1Char('\n') + consequence;
    probe.close();
    probe.remove();
    return QString();
}
