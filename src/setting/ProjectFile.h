#pragma once

#include <QString>

class SharedState;

/// How opening a setting file ended.
enum class LoadOutcome {
    Read, // read and taken over into Setting
    Unreadable, // missing, a folder, no permission, or too large to be a setting file
    Rejected, // read, but not a valid setting file: "Setting file error!"
    WrongCodePage, // its bytes would not be written back as they are: another code page wrote it
};

/// Opens a setting file or card control file as File > Open does: a new project, the file read
/// over it, and on success committed and snapshotted with the file's name and folder. After a
/// failure the new project stays, bound to the path that could not be read. `error` says why a
/// file was unreadable or in another code page, and why a rejected one was when that can be told
/// (UTF-16, a byte order mark, CR-only line ends, or a name that cannot be used, with its key).
LoadOutcome loadProject(SharedState &state, const QString &path, QString &error);

/// True when Save must ask for a name: a new project, or a file that is not a ".stf" (such as a
/// card control file).
bool saveNeedsNewName(const SharedState &state);

/// Writes the setting file of Setting to `path`, atomically. On success the path's name and folder
/// become the project's and the saved snapshot is taken; on failure nothing changes and `error`
/// names the file and the reason.
bool SaveProjectTo(SharedState &state, const QString &path, QString &error);

/// The question to ask before the project is closed: about edits not yet applied, or about applied
/// changes not yet saved; empty when nothing would be lost.
QString pendingWorkQuestion(const SharedState &state);

/// The folder as the file displays show it: empty for a new project, whole up to 30 characters,
/// else its first 15 characters, "..." and its last 13.
QString folderDisplayText(const QString &fileName, const QString &folder);
