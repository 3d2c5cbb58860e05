// dq480-cli play: a program heard, or written to a WAV file, as the device will play it.

#include "cli/CliCommands.h"

#include "audio/AudioInfo.h"
#include "audio/ProgramDuration.h"
#include "audio/ProgramPlayer.h"
#include "audio/ProgramSound.h"
#include "audio/ProgramWav.h"
#include "setting/SharedState.h"

#include <QDir>
#include <QEventLoop>

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

// Plays the sound on the PC's default output to its end (or until the tool is stopped, Ctrl+C),
// printing each step as it starts. False with `error` when the output cannot play or fails.
bool hear(std::unique_ptr<ProgramSound> sound, QTextStream &out, QStringList &problems, QString &error)
{
    ProgramPlayer player;
    QEventLoop loop;
    bool ended = false;
    QObject::connect(&player, &ProgramPlayer::finished, &loop, [&](const QString &problem) {
        error = problem;
        ended = true;
        loop.quit();
    });
    int shownStep = -2;
    int shownPass = 0;
    QObject::connect(&player, &ProgramPlayer::progressed, &loop, [&](int step, int pass, double) {
        if (step == shownStep && pass == shownPass)
            return;
        shownStep = step;
        shownPass = pass;
        out << "pass " << pass << ", "
            << (step < 0 ? QStringLiteral("interval")
                         : QStringLiteral("step %1: %2").arg(step + 1).arg(player.stepText(step)))
            << "\n";
        out.flush();
    });
    if (!player.play(std::move(sound), error))
        return false;
    if (!ended)
        loop.exec();
    problems = player.problems();
    return error.isEmpty();
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
    auto sound = std::make_unique<ProgramSound>(state.SettingBuffer, p, sentenceSoundFolders(state), *passes);
    const QList<SkippedStep> skipped = sound->skipped();
    for (const SkippedStep &step : skipped)
        cli.err << "Skipped step " << step.step + 1 << ", " << step.shown << ": " << step.reason << "\n";
    const double rate = sound->sampleRate();
    const QString programName = QStringLiteral("P%1").arg(*program, 3, 10, QLatin1Char('0'));
    cli.out << programName << ": one pass " << formatDuration(double(sound->passFrames()) / rate) << ", "
            << passesText(*sound);
    if (sound->passes() != 1 && sound->intervalSeconds() > 0)
        cli.out << ", " << sound->intervalSeconds() << " s apart";
    if (sound->totalFrames() >= 0)
        cli.out << ", in all " << formatDuration(double(sound->totalFrames()) / rate);
    cli.out << "\n";
    cli.out.flush();

    QStringList problems;
    if (render.isEmpty()) {
        QString error;
        if (!hear(std::move(sound), cli.out, problems, error)) {
            cli.err << "Cannot play " << programName << ": " << error
                    << " Write the sound with --render FILE.wav instead.\n";
            return ExitCode::UsageOrFileError;
        }
    } else {
        if (sound->passes() == 0) {
            cli.err << "Cannot write " << QDir::toNativeSeparators(render)
                    << ": the program plays until stopped; say how many passes to write with --passes K.\n";
            return ExitCode::UsageOrFileError;
        }
        QString error;
        if (!writeProgramWav(*sound, render, error)) {
            cli.err << error << "\n";
            return ExitCode::UsageOrFileError;
        }
        cli.out << QDir::toNativeSeparators(render) << ": " << sound->totalFrames() << " samples at "
                << sound->sampleRate() << " Hz, mono\n";
        problems = sound->problems();
    }
    for (const QString &problem : problems)
        cli.err << problem << "\n";
    return skipped.isEmpty() && problems.isEmpty() ? ExitCode::Ok : ExitCode::UsageOrFileError;
}
