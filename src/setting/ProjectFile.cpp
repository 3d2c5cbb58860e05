#include "ProjectFile.h"

#include "OperatorMessages.h"
#include "PathText.h"
#include "SettingFileIO.h"
#include "SettingFileReader.h"
#include "SettingFileWriter.h"
#include "SharedState.h"
#include <QCoreApplication>

namespace {

void takeNameAndFolder(SharedState &state, const QString &path)
{
    const SplitPath split = splitAtLastSeparator(path);
    state.ProjectFileName = split.name;
    state.ProjectFolder = split.folder;
}

} // namespace

LoadOutcome loadProject(SharedState &state, const QString &path, QString &error)
{
    state.NewSetting();
    QByteArray bytes;
    LoadOutcome outcome = LoadOutcome::Unreadable;
    QString problem;
    if (readFileBytes(path, bytes, error))
        outcome = ReadSettingFile(state, bytes, problem) ? LoadOutcome::Read : LoadOutcome::Rejected;
    if (outcome == LoadOutcome::Rejected && !problem.isEmpty())
        error = QCoreApplication::translate("ProjectFile", "%1 in %2.").arg(problem, path);
    if (outcome == LoadOutcome::Read) {
        takeNameAndFolder(state, path);
        state.CopyBufferToSetting(SettingSection::All);
        state.TakeSavedSnapshot();
    } else {
        state.NewSetting();
    }
    state.ProjectFilePath = path;
    return outcome;
}

bool saveNeedsNewName(const SharedState &state)
{
    const QString &path = state.ProjectFilePath;
    return path.isEmpty() || path == QLatin1String("New File") || !path.endsWith(QLatin1String(".stf"));
}

bool SaveProjectTo(SharedState &state, const QString &path, QString &error)
{
    if (!writeFileAtomically(path, WriteSettingFile(state), error))
        return false;
    takeNameAndFolder(state, path);
    state.TakeSavedSnapshot();
    return true;
}

QString pendingWorkQuestion(const SharedState &state)
{
    if (!state.SettingEqualsBuffer(SettingSection::All))
        return contentsOfEditQuestion();
    if (!state.SettingEqualsSaved())
        return QCoreApplication::translate(
            "ProjectFile", "Updating the setting data has not been continued. Does close it?");
    return QString();
}

QString folderDisplayText(const QString &fileName, const QString &folder)
{
    if (fileName.isEmpty() || fileName == QLatin1String("New File"))
        return QString();
    if (folder.size() <= 30)
        return folder;
    return folder.left(15) + QLatin1String("...") + folder.right(13);
}
