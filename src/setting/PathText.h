#pragma once

#include "platform/os/NativeOs.h"

#include <QString>
#include <QStringView>

// Paths are kept as native texts (with "\" on Windows) because the operator sees them and the
// setting file stores the sentence folder as text.

/// How paths are spelt: Windows ("\" and "/" separate, "E:" names a drive) or POSIX ("/" only).
/// Every routine takes it as a parameter, so both spellings are tested on any machine.
enum class PathStyle { Windows, Posix };

/// The style of the machine the program runs on.
constexpr PathStyle nativePathStyle()
{
    return runsOnWindows() ? PathStyle::Windows : PathStyle::Posix;
}

/// The style's folder separator: "\" on Windows, "/" elsewhere.
QChar folderSeparator(PathStyle style = nativePathStyle());

/// The folder text with one separator at its end. A bare drive ("E:") becomes its root ("E:\"),
/// not the drive's current folder.
QString withTrailingSeparator(const QString &folder, PathStyle style = nativePathStyle());

/// The folder text without a separator at its end (a root, "/" or "E:\", keeps its separator).
QString withoutTrailingSeparator(const QString &folder, PathStyle style = nativePathStyle());

/// folder + separator + name, with exactly one separator between them; below a bare drive ("E:")
/// the name is placed in the drive's root.
QString joinPath(const QString &folder, const QString &name, PathStyle style = nativePathStyle());

/// A path cut at its last separator (on Windows also at a drive colon): the folder part up to and
/// including the separator, and the name after it. A path without separator is all name.
struct SplitPath
{
    QString folder;
    QString name;
};
SplitPath splitAtLastSeparator(const QString &path, PathStyle style = nativePathStyle());
