#include "setting/ProjectFile.h"

#include "setting/CodePageCheck.h"
#include "setting/OperatorMessages.h"
#include "setting/PathText.h"
#include "setting/SettingFileIO.h"
#include "setting/SettingFileReader.h"
#include "setting/SettingFileWriter.h"
#include "setting/SharedState.h"
#include "setting/TextShape.h"

#include <QCoreApplication>

#include <utility>

namespace {

void takeNameAndFolder(SharedState &state, const QString &path)
{
    const SplitPath split = splitAtLastSeparator(path);
    state.ProjectFileName = split.name;
    state.ProjectFolder = split.folder;
}

// Reads the file's bytes into SettingBuffer, unless they are not a setting file's text or would
// not be saved back as they are.
LoadOutcome readProject(SharedState &state, const QString &path, QString &error)
{
    QByteArray bytes;
    if (!readFileBytes(path, bytes, error))
        return LoadOutcome::Unreadable;
    const QString codePage = state.Encoding.name();
    if (const TextShape shape = textShape(bytes); shape != TextShape::Plain) {
        error = textShapeMessage(shape, path, codePage);
        return LoadOutcome::Rejected;
    }
    QString problem;
    const QString text = state.Encoding.decode(bytes);
    const bool read = ReadDecodedSettingFile(state, text, problem);
    const std::optional<ChangedLine> changed = findChangedLine(bytes, text, state.Encoding);
    if (read && !changed)
        return LoadOutcome::Read;
    // A file in another code page may also fail to read (a lead byte can take the comma after it);
    // a name that cannot be used is the surer reason.
    if (!problem.isEmpty())
        error = QCoreApplication::translate("ProjectFile", "%1 in %2.").arg(problem, path);
    else if (changed)
        error = changedLineMessage(*changed, path, codePage);
    return read ? LoadOutcome::WrongCodePage : LoadOutcome::Rejected;
}

} // namespace

LoadOutcome loadProject(SharedState &state, const QString &path, QString &error)
{
    state.NewSetting();
    const LoadOutcome outcome = readProject(state, path, error);
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
