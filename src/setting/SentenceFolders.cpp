#include "setting/SentenceFolders.h"

#include "setting/FileAttributes.h"
#include "setting/FileCopy.h"
#include "setting/MsgBox.h"
#include "setting/PathText.h"
#include "setting/SentenceFolderIndex.h"
#include "setting/SharedState.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

QString workFolder(const SharedState &state)
{
    return withTrailingSeparator(joinPath(state.AppPath, QStringLiteral("SoundTmp")));
}

QString projectSentenceFolder(const SharedState &state)
{
    const QString &name = state.Setting.ProjectName;
    return withTrailingSeparator(
        joinPath(state.AppPath, name.isEmpty() ? QStringLiteral("NewProject") : name));
}

QString replaceReadOnlyQuestion(const QString &fileName)
{
    return QCoreApplication::translate("SentenceFolders",
                                       "This folder already contains read-only a file named '")
        + fileName
        + QCoreApplication::translate("SentenceFolders", "\r\n',Would like to replace the existing file?");
}

bool StoreSentenceFile(const SharedState &state, MsgBox &msgBox, StoreMode mode, const QString &sourcePath,
                       QString &error)
{
    const QString fileName = splitAtLastSeparator(sourcePath).name;
    const QString folder = mode == StoreMode::WorkFolder ? workFolder(state) : projectSentenceFolder(state);
    if (!QDir().mkpath(folder)) {
        error = QCoreApplication::translate("SentenceFolders", "Cannot create the folder %1").arg(folder);
        return false;
    }
    const QString destination = folder + fileName;
    if (mode == StoreMode::ProjectFolder && isReadOnly(destination)) {
        if (msgBox.show(replaceReadOnlyQuestion(fileName), MsgBox::Buttons::YesNo, MsgBox::Icon::Question)
            != MsgBox::Answer::Yes)
            return true;
        setReadOnly(destination, false);
    }
    if (!copyFileReplacing(sourcePath, destination, error))
        return false;
    if (mode == StoreMode::WorkFolder)
        setReadOnly(destination, false);
    return true;
}

QStringList missingSentenceFiles(const SharedState &state)
{
    return missingSentenceFiles(state, SentenceFolderIndex(projectSentenceFolder(state)));
}

QStringList missingSentenceFiles(const SharedState &state, const SentenceFolderIndex &folder)
{
    QStringList missing;
    for (const QString &name : state.Setting.SentenceFileName) {
        if (!name.isEmpty() && folder.find(name).isEmpty())
            missing.append(name);
    }
    return missing;
}

bool SentenceFilesPresent(const SharedState &state)
{
    return missingSentenceFiles(state).isEmpty();
}

QString takeFilePath(const SharedState &state)
{
    return workFolder(state) + QStringLiteral("take.wav");
}

void ClearWorkFolder(const SharedState &state)
{
    // A take that a stopped program left behind is of no use to the next one.
    QFile::remove(takeFilePath(state));
    // Every spelling of ".mp2" (the work folder has always been cleared of all four), matched by
    // hand: a name filter would bring a regular expression engine into every start.
    const QDir folder(workFolder(state));
    for (const QString &name : folder.entryList(QDir::Files | QDir::Hidden)) {
        if (!name.endsWith(QLatin1String(".mp2"), Qt::CaseInsensitive))
            continue;
        const QString path = folder.filePath(name);
        if (!isReadOnly(path))
            QFile::remove(path);
    }
}
