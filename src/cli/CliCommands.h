#pragma once

#include "cli/TerminalMsgBox.h"
#include "setting/TextEncoding.h"

#include <QString>
#include <QStringList>
#include <QTextStream>

/// Exit codes of the command-line tool.
namespace ExitCode {
constexpr int Ok = 0;
constexpr int SettingFileError = 1; // the reader rejected the file
constexpr int UsageOrFileError = 2; // bad arguments, or a path that cannot be read or written
constexpr int CardWriteIncomplete = 3; // card write went through, but some files did not reach the card
constexpr int CardWriteStopped = 4; // card write stopped before its end
} // namespace ExitCode

/// What every command needs: where to print, the program folder, the chosen code page, the flags.
struct CliContext
{
    QTextStream &out;
    QTextStream &err;
    QString appPath;
    TextEncoding encoding;
    bool force = false;
    bool cardControl = false;
    bool json = false;
};

class SharedState;

/// Reads a project for a command; prints why when it cannot and returns the exit code, else -1.
int loadOrReport(CliContext &cli, SharedState &state, const QString &path);

int runNew(CliContext &cli, const QStringList &args);
int runCheck(CliContext &cli, const QStringList &args);
int runConvert(CliContext &cli, const QStringList &args);
int runShow(CliContext &cli, const QStringList &args);
/// Lists the drives as the program sees them; with `watch`, prints each change until stopped.
int runDrives(CliContext &cli, const QStringList &args, bool watch);
/// Prints a project to a PDF file.
int runPrint(CliContext &cli, const QStringList &args, const QString &kind, const QString &pdf,
             const QString &pages);
/// Writes a project to the card mounted at `card`, answering questions as `answers` says.
int runWriteCard(CliContext &cli, const QStringList &args, const QString &card,
                 TerminalMsgBox::Preset answers);

/// The options of import, as given.
struct AudioOptions
{
    QString to;
    QString name;
    QString quality;
    QString loudness;
    bool trim = false;
};

/// Makes device-ready sentences from recordings in a folder; prints name, duration and loudness.
int runImport(CliContext &cli, const QStringList &args, const AudioOptions &options);
/// Plays program N (1-64) of a project as the device will, or with `render` writes that sound to a
/// WAV file; `passes` limits the passes (empty: as the program says).
int runPlay(CliContext &cli, const QStringList &args, const QString &program, const QString &passes,
            const QString &render);
/// Prints each audio file's format, duration, loudness, true peak and whether the device plays it.
int runInfo(CliContext &cli, const QStringList &args);
