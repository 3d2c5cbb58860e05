#include "platform/win/WindowsFormatLaunch.h"

#include "platform/FormatCommand.h"
#include "platform/win/WinFormat.h"
#include "setting/PcFileReplacement.h"

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
    return launch.answers.isEmpty() || writeFileAtomically(launch.answerFile, launch.answers.toUtf8(), error);
}
