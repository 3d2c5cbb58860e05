#pragma once

#include <QString>

/// What stands at a path that is to be read whole. Only a regular file has an end that comes: a
/// named pipe waits for a writer and a device such as /dev/zero never ends, so reading either
/// would hold the program for ever.
enum class PathKind {
    File, // a regular file, or a link to one
    Missing,
    Folder,
    Other, // a pipe, a device or a socket
};

PathKind pathKind(const QString &path);
