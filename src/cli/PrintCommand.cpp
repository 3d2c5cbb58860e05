#include "cli/CliCommands.h"

#include "print/PrintOut.h"
#include "setting/ProjectFile.h"
#include "setting/SharedState.h"

#include <QPdfWriter>

int runPrint(CliContext &cli, const QStringList &args, const QString &kindText, const QString &pdf,
             const QString &pages)
{
    if (args.size() != 1 || pdf.isEmpty()) {
        cli.err << "Usage: dq480-cli print FILE --kind info|all|programs|program=N --pdf OUT.pdf [--pages "
                   "FROM-TO]\n";
        return ExitCode::UsageOrFileError;
    }
    PrintKind kind = PrintKind::AllSettingData;
    int program = 1;
    if (kindText == QLatin1String("info")) {
        kind = PrintKind::FileInformation;
    } else if (kindText == QLatin1String("programs")) {
        kind = PrintKind::AllPrograms;
    } else if (kindText.startsWith(QLatin1String("program="))) {
        kind = PrintKind::OneProgram;
        bool ok = false;
        program = kindText.mid(8).toInt(&ok);
        if (!ok || program < 1 || program > 64) {
            cli.err << "The program number must be 1 to 64.\n";
            return ExitCode::UsageOrFileError;
        }
    } else if (!kindText.isEmpty() && kindText != QLatin1String("all")) {
        cli.err << "Unknown print-out: " << kindText << " (info, all, programs or program=N)\n";
        return ExitCode::UsageOrFileError;
    }
    int from = 0;
    int to = 0;
    if (!pages.isEmpty()) {
        const QStringList range = pages.split(QLatin1Char('-'));
        bool okFrom = false;
        bool okTo = false;
        from = range.value(0).toInt(&okFrom);
        to = range.size() == 2 ? range[1].toInt(&okTo) : from;
        if (!okFrom || (range.size() == 2 && !okTo) || from < 1 || to < from) {
            cli.err << "Incorrect value has been entered.\n";
            return ExitCode::UsageOrFileError;
        }
    }
    SharedState state(cli.appPath, cli.encoding);
    if (const int failed = loadOrReport(cli, state, args.first()); failed >= 0)
        return failed;
    QPdfWriter writer(pdf);
    writer.setTitle(QStringLiteral("DQ-480 ") + state.ProjectFileName);
    writer.setResolution(300);
    const QList<PrintRow> rows = buildPrintOut(state, kind, program);
    if (to > printOutPageCount(writer, rows)) {
        cli.err << "Incorrect value has been entered.\n";
        return ExitCode::UsageOrFileError;
    }
    const int count = renderPrintOut(writer, rows, printHeader(state), from, to);
    if (count <= 0) {
        cli.err << "Cannot write " << pdf << "\n";
        return ExitCode::UsageOrFileError;
    }
    cli.out << pdf << ": " << count << (count == 1 ? " page\n" : " pages\n");
    return ExitCode::Ok;
}
