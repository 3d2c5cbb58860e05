#pragma once

#include <QString>
#include <QStringView>

// Paths are kept as native texts (with "\" on Windows) because the operator sees them and the
// setting file stores the sentence folder as text.

/// The platform's folder separator: "\" on Windows, "/" elsewhere.
QChar folderSeparator();

/// The folder text with one separator at its end.
QString withTrailingSeparator(const QString &folder);

/// The folder text without a separator at its end (a root keeps its separator).
QString withoutTrailingSeparator(const QString &folder);

/// folder + separator + name, with exactly one separator between them.
QString joinPath(const QString &folder, const QString &name);

/// A path cut at its last separator (on Windows also at a drive colon): the folder part up to and
/// including the separator, and the name after it. A path without separator is all name.
struct SplitPath
{
    QString folder;
    QString name;
};
SplitPath splitAtLastSeparator(const QString &path);
