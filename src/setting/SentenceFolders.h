#pragma once

#include <QString>
#include <QStringList>

class MsgBox;
class SentenceFolderIndex;
class SharedState;

/// The work folder "SoundTmp" in the program's folder, with a trailing separator: sentence files
/// chosen in the sentence dialog wait there until the table is applied.
QString workFolder(const SharedState &state);
/// The recorder's take, in the work folder: a plain WAV file that grows while it records.
QString takeFilePath(const SharedState &state);

/// Where the project keeps its sentence files: the program's folder and the project name, or
/// "NewProject" while the project has no name; with a trailing separator.
QString projectSentenceFolder(const SharedState &state);

/// The text of the question asked before a read-only file named `fileName` is replaced.
QString replaceReadOnlyQuestion(const QString &fileName);

enum class StoreMode {
    WorkFolder = 0, // copy into SoundTmp, made writable
    ProjectFolder = 1, // copy into the project's sentence folder, asking before replacing a read-only file
};

/// Copies a sentence file into the work folder or the project's folder, creating the folder.
/// False when the file system fails; `error` then says which file and why. Declining to replace
/// a read-only file keeps it and is not a failure.
bool StoreSentenceFile(const SharedState &state, MsgBox &msgBox, StoreMode mode, const QString &sourcePath,
                       QString &error);

/// The sentence files that Setting names (all 512 slots) and that are not in the project's
/// sentence folder. Names are matched without regard to case, as on the card's file system.
QStringList missingSentenceFiles(const SharedState &state);
/// The same, against a listing of the project's sentence folder the caller has made already.
QStringList missingSentenceFiles(const SharedState &state, const SentenceFolderIndex &folder);

/// True when every sentence file that Setting names is in the project's sentence folder.
bool SentenceFilesPresent(const SharedState &state);

/// Deletes the MP2 files of the work folder; a file that cannot be deleted (read-only) stays.
void ClearWorkFolder(const SharedState &state);
