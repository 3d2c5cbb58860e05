#pragma once

#include <QString>

// The read-only attribute of a file, the flag the card's write protection and the sentence folders
// rely on. On Linux it is the file's write permission bits, read from the file itself rather than
// from access(), so that it means the same when the program runs as root.

bool isReadOnly(const QString &path);

/// Sets or clears the attribute of the file itself, never of a symbolic link's target. False when
/// the file system refuses; `error`, when given, then names the file and the system's reason.
bool setReadOnly(const QString &path, bool readOnly, QString *error = nullptr);

/// True when the file system that holds `path` is mounted read-only: a card with its lock switch
/// set, or a medium that cannot be written at all. Its files may still look writable.
bool isOnReadOnlyMedium(const QString &path);
