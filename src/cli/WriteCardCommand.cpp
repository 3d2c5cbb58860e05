#include "cli/CliCommands.h"

#include "cli/TerminalMsgBox.h"
#include "platform/CardSlotDetection.h"
#include "platform/SystemDrives.h"
#include "setting/CardWrite.h"
#include "setting/ProjectFile.h"
#include "setting/SharedState.h"

#include <QDir>

int runWriteCard(CliContext &cli, const QStringList &args, const QString &card,
                 TerminalMsgBox::Preset answers)
{
    if (args.size() != 1 || card.isEmpty()) {
        cli.err << "Usage: dq480-cli write-card PROJECT --card MOUNTPOINT [--yes|--no]\n";
        return ExitCode::UsageOrFileError;
    }
    SharedState state(cli.appPath, cli.encoding);
    if (const int failed = loadOrReport(cli, state, args.first()); failed >= 0)
        return failed;
    state.CardSlot = QDir::toNativeSeparators(QDir(card).absolutePath());
    const std::unique_ptr<DriveSource> drives = makeSystemDriveSource();
    CardSlotDetection detection(state, *drives);
    TerminalMsgBox msgBox(cli.out, cli.err, answers);
    CardWriteHooks hooks;
    hooks.slotTest = [&] {
        return detection.CardCheck(state.CardSlot);
    };
    hooks.showMissingFiles = [&](const QStringList &missing) {
        cli.err << " Not find file list\n";
        for (const QString &name : missing)
            cli.err << "  " << name << "\n";
        cli.err << " Not find file count:  " << missing.size() << "\n";
    };
    hooks.progress = [&](const QString &name, int done, int count) {
        if (!name.isEmpty())
            cli.out << "Writing " << name << " (" << done + 1 << "/" << count << ")\n";
    };
    // A file can be passed over twice (missing, and its read-only copy on the card kept).
    QStringList skipped;
    hooks.skipped = [&](const QString &name) {
        if (!skipped.contains(name))
            skipped.append(name);
    };
    if (!WriteCard(state, msgBox, hooks, true))
        return ExitCode::CardWriteStopped;
    if (!skipped.isEmpty()) {
        cli.err << skipped.size() << (skipped.size() == 1 ? " file" : " files")
                << " did not reach the card: " << skipped.join(QStringLiteral(", ")) << "\n";
        return ExitCode::CardWriteIncomplete;
    }
    return ExitCode::Ok;
}
