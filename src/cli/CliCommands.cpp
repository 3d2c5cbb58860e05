#include "cli/CliCommands.h"

#include "cli/SettingJson.h"
#include "setting/CodePageCheck.h"
#include "setting/ProjectFile.h"
#include "setting/SettingFileIO.h"
#include "setting/SettingFileWriter.h"
#include "setting/SharedState.h"

#include <QFileInfo>
#include <QJsonDocument>

#include <memory>

namespace {

std::unique_ptr<SharedState> makeState(const CliContext &cli)
{
    return std::make_unique<SharedState>(cli.appPath, cli.encoding);
}

bool expectArgs(CliContext &cli, const QStringList &args, int count, const char *usage)
{
    if (args.size() == count)
        return true;
    cli.err << "Usage: dq480-cli " << usage << "\n";
    return false;
}

} // namespace

int loadOrReport(CliContext &cli, SharedState &state, const QString &path)
{
    QString error;
    // The project's folder is shown and printed: it is the file's absolute folder.
    switch (loadProject(state, QFileInfo(path).absoluteFilePath(), error)) {
    case LoadOutcome::Read:
        // Written out again, a character the code page lacks would silently become another.
        if (const std::optional<UnencodableText> found = findUnencodableText(state)) {
            cli.err << unencodableTextMessage(*found, state.Encoding.name()) << "\n";
            return ExitCode::SettingFileError;
        }
        return -1;
    case LoadOutcome::Unreadable:
        cli.err << error << "\n";
        return ExitCode::UsageOrFileError;
    case LoadOutcome::WrongCodePage:
        cli.err << error << "\n";
        return ExitCode::SettingFileError;
    case LoadOutcome::Rejected:
        cli.err << "Setting file error!\n";
        if (!error.isEmpty())
            cli.err << error << "\n";
        return ExitCode::SettingFileError;
    }
    return ExitCode::SettingFileError;
}

namespace {

int writeOrReport(CliContext &cli, const QString &path, const QByteArray &bytes)
{
    QString error;
    if (!writeFileAtomically(path, bytes, error)) {
        cli.err << error << "\n";
        return ExitCode::UsageOrFileError;
    }
    return ExitCode::Ok;
}

bool namesCardControlFile(const QString &path)
{
    return QFileInfo(path).fileName().compare(QLatin1String("DQ480.CSV"), Qt::CaseInsensitive) == 0;
}

int usedSentences(const SettingData &s)
{
    int used = 0;
    for (int slot = 0; slot < s.sentenceTable().entries(); ++slot)
        used += s.SentenceFileName[slot].isEmpty() ? 0 : 1;
    return used;
}

int programsWithSteps(const SettingData &s)
{
    int count = 0;
    for (const auto &steps : s.ProgramData)
        count
            += std::any_of(steps.begin(), steps.end(), [](const QString &t) { return !t.isEmpty(); }) ? 1 : 0;
    return count;
}

} // namespace

int runNew(CliContext &cli, const QStringList &args)
{
    if (!expectArgs(cli, args, 1, "new FILE"))
        return ExitCode::UsageOrFileError;
    const QString &path = args.first();
    if (QFileInfo::exists(path) && !cli.force) {
        cli.err << path << " already exists; give --force to replace it with a new project.\n";
        return ExitCode::UsageOrFileError;
    }
    const auto state = makeState(cli);
    return writeOrReport(cli, path, WriteSettingFile(*state));
}

int runCheck(CliContext &cli, const QStringList &args)
{
    if (!expectArgs(cli, args, 1, "check FILE"))
        return ExitCode::UsageOrFileError;
    const auto state = makeState(cli);
    if (const int failed = loadOrReport(cli, *state, args.first()); failed >= 0)
        return failed;
    const SettingData &s = state->Setting;
    cli.out << "Project name: " << s.ProjectName << "\n"
            << "Card capacity: " << s.sentenceTable().entries() << " sentences\n"
            << "Used sentences: " << usedSentences(s) << "\n"
            << "Programs with steps: " << programsWithSteps(s) << "\n";
    return ExitCode::Ok;
}

int runConvert(CliContext &cli, const QStringList &args)
{
    if (!expectArgs(cli, args, 2, "convert IN OUT [--card-control]"))
        return ExitCode::UsageOrFileError;
    const auto state = makeState(cli);
    if (const int failed = loadOrReport(cli, *state, args.at(0)); failed >= 0)
        return failed;
    const bool body = cli.cardControl || namesCardControlFile(args.at(1));
    return writeOrReport(cli, args.at(1), body ? WriteSettingBody(*state) : WriteSettingFile(*state));
}

int runShow(CliContext &cli, const QStringList &args)
{
    if (!expectArgs(cli, args, 1, "show FILE --json"))
        return ExitCode::UsageOrFileError;
    if (!cli.json) {
        cli.err << "show prints JSON only: give --json.\n";
        return ExitCode::UsageOrFileError;
    }
    const auto state = makeState(cli);
    if (const int failed = loadOrReport(cli, *state, args.first()); failed >= 0)
        return failed;
    cli.out << QJsonDocument(settingToJson(*state)).toJson(QJsonDocument::Indented);
    return ExitCode::Ok;
}
