#pragma once

#include <QString>

/// The Windows format command of the card format, built as text so it can be checked anywhere.
namespace FormatCommand {

/// The answer file: "FMT_HDD.tmp" for a fixed drive (written each time), else "FMT.tmp" (which the
/// system expects in place), in the "DQ480tmp" folder of the system directory.
QString answerFilePath(const QString &systemDirectory, bool fixedDrive);

/// What a fixed drive's answer file holds: the volume label, then "Y".
QString fixedDriveAnswers(const QString &volumeLabel);

/// The command processor that runs the format: systemdir\cmd.exe.
QString commandProcessor(const QString &systemDirectory);

/// systemdir\cmd.exe /c format.com E:[ /V:label]/X /FS:FAT<answerfile.
/// Kept on purpose: the missing blank before "/X" is how the command has always been given.
QString commandLine(const QString &systemDirectory, const QString &drive, bool fixedDrive,
                    const QString &volumeLabel);

} // namespace FormatCommand
