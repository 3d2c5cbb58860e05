// dq480-cli play: a program heard, or written to a WAV file, as the device will play it.

#include "cli/CliCommands.h"

#include "audio/AudioInfo.h"
#include "audio/ProgramDuration.h"
#include "audio/ProgramSound.h"
#include "audio/ProgramWav.h"
#include "cli/ProgramSpeaker.h"
#include "setting/SharedState.h"

#include <QDir>

namespace {

// A whole number from `low` to `high`; none for anything else.
std::optional<int> numberIn(const QString &text, int low, int high)
{
    bool ok = false;
    const int value = text.toInt(&ok);
    return ok && value >= low && value <= high ? std::optional<int>(value) : std::nullopt;
}

QString passesText(const ProgramSound &sound)
{
    if (sound.passes() == 0)
        return QStringLiteral("until stopped");
    return sound.passes() == 1 ? QStringLiteral("1 pass") : QStringLiteral("%1 passes").arg(sound.passes());
}

} // namespace

int runPlay(CliContext &cli, const QStringList &args, const QString &programText, const QString &passesGiven,
            const QString &render)
{
    constexpr int MostPasses = 10000;
    if (args.size() != 1 || programText.isEmpty()) {
        cli.err << "Usage: dq480-cli play PROJECT --program N [--passes K] [--render FILE.wav]\n";
        return ExitCode::UsageOrFileError;
    }
    const std::optional<int> program = numberIn(programText, 1, SettingData::Programs);
    if (!program) {
        cli.err << "Not a program number: " << programText << " (1 to 64)\n";
        return ExitCode::UsageOrFileError;
    }
    const std::optional<int> passes = passesGiven.isEmpty() ? 0 : numberIn(passesGiven, 1, MostPasses);
    if (!passes) {
        cli.err << "Not a number of passes: " << passesGiven << " (1 to " << MostPasses << ")\n";
        return ExitCode::UsageOrFileError;
    }
    SharedState state(cli.appPath, cli.encoding);
    if (const int failed = loadOrReport(cli, state, args.first()); failed >= 0)
        return failed;

    const int p = *program - 1;
    ProgramSound sound(state.SettingBuffer, p, sentenceSoundFolders(state), *passes);
    for (const SkippedStep &skipped : sound.skipped())
        cli.err << "Skipped step " << skipped.step + 1 << ", " << skipped.shown << ": " << skipped.reason
                << "\n";
    const double rate = sound.sampleRate();
    const QString programName = QStringLiteral("P%1").arg(*program, 3, 10, QLatin1Char('0'));
    cli.out << programName << ": one pass " << formatDuration(double(sound.passFrames()) / rate) << ", "
            << passesText(sound);
    if (sound.passes() != 1 && sound.intervalSeconds() > 0)
        cli.out << ", " << sound.intervalSeconds() << " s apart";
    if (sound.totalFrames() >= 0)
        cli.out << ", in all " << formatDuration(double(sound.totalFrames()) / rate);
    cli.out << "\n";
    cli.out.flush();

    if (render.isEmpty()) {
        QString error;
        if (!playOnSpeaker(sound, cli.out, error)) {
            cli.err << "Cannot play " << programName << ": " << error << "\n";
            return ExitCode::UsageOrFileError;
        }
    } else {
        if (sound.passes() == 0) {
            cli.err << "Cannot write " << QDir::toNativeSeparators(render)
                    << ": the program plays until stopped; say how many passes to write with --passes K.\n";
            return ExitCode::UsageOrFileError;
        }
        QString error;
        if (!writeProgramWav(sound, render, error)) {
            cli.err << error << "\n";
            return ExitCode::UsageOrFileError;
        }
        cli.out << QDir::toNativeSeparators(render) << ": " << sound.totalFrames() << " samples at "
                << sound.sampleRate() << " Hz, mono\n";
    }
    for (const QString &problem : sound.problems())
        cli.err << problem << "\n";
    return sound.skipped().isEmpty() && sound.problems().isEmpty() ? ExitCode::Ok
                                                                   : ExitCode::UsageOrFileError;
}
