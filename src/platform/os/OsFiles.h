#pragma once

#include <QByteArray>
#include <QString>

// The steps of writing and protecting a file that differ between systems. Each returns false with
// errno set (Windows' own error codes are turned into the nearest errno), so the caller words every
// failure the same way on both systems.

/// The reason an errno value stands for, in the same plain words on every system ("Permission
/// denied", "No space left on device"): on Windows Qt reads the number as a Windows error code.
QString systemErrorText(int errnoCode);

/// What stands at a path itself: a symbolic link is one, never the file it leads to.
enum class EntryKind { Missing, File, Link, Other };
EntryKind entryKind(const QString &path);

/// Creates `path` for writing, in binary mode, failing when anything (a file, a link) is already
/// there, so nothing is ever written through an entry someone else placed. The descriptor or -1.
int createNewFile(const QString &path);

/// As write(2): the number of bytes taken, or -1.
qint64 writeToFile(int fd, const char *data, qint64 size);

bool closeFile(int fd);

/// The permission bits of the file at `path` (a link followed), to be given to its replacement;
/// -1 when there is no file, or where the system keeps no such bits.
int filePermissions(const QString &path);

/// Gives an open file the bits `filePermissions` returned, through the file itself.
void setFilePermissions(int fd, int permissions);

/// Puts `from` in the place of `to` in one step: at every moment `to` is either the old file or
/// the new one, never missing, even when the PC stops or the card is pulled in between.
bool replaceFileInOneStep(const QString &from, const QString &to);

/// Pushes a file's written data out of the system's cache onto the disk. A file system that has
/// nothing to flush (or flushes by itself) is no failure.
bool flushFileToDisk(int fd);

/// Makes a folder's entries (a rename into it) durable where the system allows it; best effort.
void flushFolderEntries(const QString &folder);

/// Up to `limit` bytes of the file at `path`, never through a symbolic link, read from the disk
/// itself where the system lets its cached copy be dropped first: what a card really holds.
bool readFromDisk(const QString &path, qint64 limit, QByteArray &bytes);

/// Sets or clears the read-only attribute (on Linux the write permission) of the file itself,
/// never of a symbolic link's target; errno is ELOOP when `path` is a link.
bool setFileReadOnly(const QString &path, bool readOnly);
