#include "platform/FormatCommand.h"

namespace FormatCommand {

QString answerFilePath(const QString &systemDirectory, bool fixedDrive)
{
    return systemDirectory + QStringLiteral("\\DQ480tmp")
        + (fixedDrive ? QStringLiteral("\\FMT_HDD.tmp") : QStringLiteral("\\FMT.tmp"));
}

QString fixedDriveAnswers(const QString &volumeLabel)
{
    return volumeLabel + QStringLiteral("\r\nY\r\n");
}

QString commandProcessor(const QString &systemDirectory)
{
    return systemDirectory + QStringLiteral("\\cmd.exe");
}

QString commandLine(const QString &systemDirectory, const QString &drive, bool fixedDrive,
                    const QString &volumeLabel)
{
    const QString labelOption = fixedDrive ? QStringLiteral(" /V:") + volumeLabel : QString();
    return commandProcessor(systemDirectory) + QStringLiteral(" /c ") + QStringLiteral("format.com ") + drive
        + labelOption + QStringLiteral("/X /FS:FAT<") + answerFilePath(systemDirectory, fixedDrive);
}

} // namespace FormatCommand
