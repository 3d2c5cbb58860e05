#pragma once

#include <QString>

// The steps of a file replacement that differ between systems. Each returns false with errno set
// (Windows' own error codes are turned into the nearest errno), so the caller words every failure
// the same way on both systems.

/// The reason an errno value stands for, in the same plain words on every system ("Permission
/// denied", "No space left on device"): on Windows Qt reads the number as a Windows error code.
QString systemErrorText(int errnoCode);

/// Creates `path` for writing, in binary mode, failing when anything (a file, a link) is already
/// there, so nothing is ever written through an entry someone else placed. The descriptor or -1.
int createNewFile(const QString &path);

/// Puts `from` in the place of `to` in one step: at every moment `to` is either the old file or
/// the new one, never missing, even when the PC stops or the card is pulled in between.
bool replaceFileInOneStep(const QString &from, const QString &to);

/// Pushes a file's written data out of the system's cache onto the disk. A file system that has
/// nothing to flush (or flushes by itself) is no failure.
bool flushFileToDisk(int fd);

/// Makes a folder's entries (a rename into it) durable where the system allows it; best effort.
void flushFolderEntries(const QString &folder);
