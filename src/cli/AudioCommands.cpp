// dq480-cli import and info: recordings made into sentences, and what a file holds.

#include "audio/AudioDecode.h"
#include "audio/AudioImport.h"
#include "audio/AudioInfo.h"
#include "audio/SentenceName.h"
#include "cli/CliCommands.h"

#include <QDir>
#include <QFileInfo>

#include <cmath>

namespace {

QString decibels(double value, const char *unit)
{
    return std::isfinite(value) ? QStringLiteral("%1 %2").arg(value, 0, 'f', 1).arg(QLatin1String(unit))
                                : QStringLiteral("silent");
}

// The rule a name breaks, to follow "does not fit a sentence".
QString nameRule(SentenceNameFault fault)
{
    switch (fault) {
    case SentenceNameFault::Empty:
        return QStringLiteral("it is empty");
    case SentenceNameFault::TooLong:
        return QStringLiteral("at most 8 characters before .MP2");
    case SentenceNameFault::NotPlainAscii:
        return QStringLiteral("letters A-Z, digits and marks only: no blanks, control characters or "
                              "letters outside ASCII");
    case SentenceNameFault::FullStop:
        return QStringLiteral("no full stop before .MP2");
    case SentenceNameFault::ForbiddenCharacter:
        return QStringLiteral("none of \\ / : * ? < > | , \" ;");
    case SentenceNameFault::DeviceName:
        return QStringLiteral("not a name Windows keeps for a device: CON, PRN, AUX, NUL, COM1 to COM9, "
                              "LPT1 to LPT9");
    case SentenceNameFault::None:
        break;
    }
    return QString();
}

bool parseImportOptions(CliContext &cli, const AudioOptions &given, ImportOptions &options)
{
    if (given.quality.isEmpty() || given.quality == QLatin1String("standard")) {
        options.quality = Mp2Quality::Standard;
    } else if (given.quality == QLatin1String("high")) {
        options.quality = Mp2Quality::High;
    } else {
        cli.err << "Unknown quality: " << given.quality << " (standard or high)\n";
        return false;
    }
    if (given.loudness == QLatin1String("off")) {
        options.targetLufs.reset();
    } else if (!given.loudness.isEmpty()) {
        bool ok = false;
        const double lufs = given.loudness.toDouble(&ok);
        if (!ok || lufs > 0.0 || lufs < -70.0) {
            cli.err << "Not a loudness: " << given.loudness << " (LUFS from -70 to 0, or off)\n";
            return false;
        }
        options.targetLufs = lufs;
    }
    options.trimSilence = given.trim;
    return true;
}

} // namespace

int runImport(CliContext &cli, const QStringList &args, const AudioOptions &given)
{
    if (args.isEmpty() || given.to.isEmpty()) {
        cli.err << "Usage: dq480-cli import IN... --to FOLDER [--name NAME] [--quality standard|high]"
                   " [--loudness LUFS|off] [--trim]\n";
        return ExitCode::UsageOrFileError;
    }
    if (!given.name.isEmpty() && args.size() > 1) {
        cli.err << "--name names one sentence: give one recording with it.\n";
        return ExitCode::UsageOrFileError;
    }
    if (const SentenceNameFault fault = sentenceNameFault(given.name);
        !given.name.isEmpty() && fault != SentenceNameFault::None) {
        cli.err << "Not a sentence name: " << given.name << " (" << nameRule(fault) << ")\n";
        return ExitCode::UsageOrFileError;
    }
    if (!QFileInfo(given.to).isDir()) {
        cli.err << (QFileInfo::exists(given.to) ? "Not a folder: " : "No such folder: ")
                << QDir::toNativeSeparators(given.to) << "\n";
        return ExitCode::UsageOrFileError;
    }
    ImportOptions options;
    if (!parseImportOptions(cli, given, options))
        return ExitCode::UsageOrFileError;

    int status = ExitCode::Ok;
    for (const QString &input : args) {
        // A recording that is not there is reported as such, whatever its name.
        if (const QString problem = recordingPathProblem(input); !problem.isEmpty()) {
            cli.err << "Cannot import " << QDir::toNativeSeparators(input) << ": " << problem << "\n";
            status = ExitCode::UsageOrFileError;
            continue;
        }
        const QString ownName = QFileInfo(input).completeBaseName();
        if (const SentenceNameFault fault = sentenceNameFault(ownName);
            given.name.isEmpty() && fault != SentenceNameFault::None) {
            cli.err << "Cannot import " << QDir::toNativeSeparators(input)
                    << ": its name does not fit a sentence (" << nameRule(fault) << ")."
                    << " Give one with --name, for example --name " << proposeSentenceName(input).chopped(4)
                    << "\n";
            status = ExitCode::UsageOrFileError;
            continue;
        }
        const QString fileName = sentenceFileName(given.name.isEmpty() ? ownName : given.name);
        const QString output = QDir(given.to).filePath(fileName);
        if (QFileInfo::exists(output) && !cli.force) {
            cli.err << "Cannot import " << QDir::toNativeSeparators(input) << ": "
                    << QDir::toNativeSeparators(output) << " exists (--force replaces it)\n";
            status = ExitCode::UsageOrFileError;
            continue;
        }
        ImportResult result;
        QString error;
        if (!importRecording(input, output, options, result, error)) {
            cli.err << error << "\n";
            status = ExitCode::UsageOrFileError;
            continue;
        }
        cli.out << fileName << "  " << formatDuration(result.seconds) << "  "
                << decibels(result.loudnessLufs, "LUFS") << "\n";
        cli.out.flush();
    }
    return status;
}

int runInfo(CliContext &cli, const QStringList &args)
{
    if (args.isEmpty()) {
        cli.err << "Usage: dq480-cli info FILE...\n";
        return ExitCode::UsageOrFileError;
    }
    int status = ExitCode::Ok;
    for (const QString &path : args) {
        AudioInfo info;
        QString error;
        if (!probeAudioFile(path, info, error)) {
            cli.err << error << "\n";
            status = ExitCode::UsageOrFileError;
            continue;
        }
        cli.out << QDir::toNativeSeparators(path) << "\n"
                << "  format:    " << info.format << ", " << info.sampleRate << " Hz, "
                << (info.channels == 1       ? QStringLiteral("mono")
                        : info.channels == 2 ? QStringLiteral("stereo")
                                             : QStringLiteral("%1 channels").arg(info.channels))
                << "\n"
                << "  duration:  " << formatDuration(info.seconds) << "\n"
                << "  loudness:  " << decibels(info.integratedLufs, "LUFS") << "\n"
                << "  true peak: " << decibels(info.truePeakDb, "dBTP") << "\n"
                << "  device:    "
                << (info.deviceAccepts ? "plays it"
                                       : "refuses it (import it to make a sentence the device plays)")
                << "\n";
        cli.out.flush();
    }
    return status;
}
