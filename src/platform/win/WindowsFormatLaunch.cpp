#include "platform/win/WindowsFormatLaunch.h"

#include "platform/FormatCommand.h"
#include "platform/os/OsCodePages.h"
#include "platform/win/WinFormat.h"
#include "setting/PcFileReplacement.h"

WindowsFormatLaunch windowsFormatLaunch(const DriveInfo &drive)
{
    const QString system = QString::fromStdWString(winSystemDirectory());
    const bool fixed = drive.type == DriveInfo::Fixed;
    const QString label
        = fixed ? QString::fromStdWString(winVolumeLabel(drive.path.toStdWString())) : QString();
    WindowsFormatLaunch launch;
    launch.program = FormatCommand::commandProcessor(system);
    launch.commandLine = FormatCommand::commandLine(system, drive.path, fixed, label);
    launch.answerFile = FormatCommand::answerFilePath(system, fixed);
    if (fixed)
        launch.answers = FormatCommand::fixedDriveAnswers(label);
    return launch;
}

// The volume label is typed to the format command as at its console: a label outside ASCII in any
// other code page would not match the drive's, and the format would stop.
bool writeFormatAnswers(const WindowsFormatLaunch &launch, QString &error)
{
    return launch.answers.isEmpty()
        || writeFileAtomically(launch.answerFile,
                               encodeInSystemCodePage(int(winConsoleCodePage()), launch.answers), error);
}
