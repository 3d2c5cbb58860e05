#include "platform/win/WindowsFormatLaunch.h"

#include "platform/FormatCommand.h"
#include "platform/win/WinFormat.h"

#include <QCoreApplication>

WindowsFormatLaunch windowsFormatLaunch(const DriveInfo &drive)
{
    const QString system = QString::fromStdString(winSystemDirectory());
    const bool fixed = drive.type == DriveInfo::Fixed;
    const QString label
        = fixed ? QString::fromStdString(winVolumeLabel(drive.path.toStdString())) : QString();
    WindowsFormatLaunch launch;
    launch.commandLine = FormatCommand::commandLine(system, drive.path, fixed, label);
    launch.answerFile = FormatCommand::answerFilePath(system, fixed);
    if (fixed)
        launch.answers = FormatCommand::fixedDriveAnswers(label);
    return launch;
}

bool writeFormatAnswers(const WindowsFormatLaunch &launch, QString &error)
{
    if (launch.answers.isEmpty()
        || winWriteTextFile(launch.answerFile.toStdString(), launch.answers.toStdString()))
        return true;
    error = QCoreApplication::translate("CardFormatter", "Cannot write the format answer file.");
    return false;
}
