#include "setting/PathText.h"

QChar folderSeparator(PathStyle style)
{
    return style == PathStyle::Windows ? QLatin1Char('\\') : QLatin1Char('/');
}

namespace {

bool isSlash(QChar c, PathStyle style)
{
    return c == QLatin1Char('/') || (style == PathStyle::Windows && c == QLatin1Char('\\'));
}

// Where a path may be cut into folder and name: at a separator, and on Windows after "E:".
bool isSplitPoint(QChar c, PathStyle style)
{
    return isSlash(c, style) || (style == PathStyle::Windows && c == QLatin1Char(':'));
}

// "E:\" or "/": what is left when a root loses its separator would be another place.
bool isRoot(const QString &folder, PathStyle style)
{
    if (folder.size() == 1)
        return isSlash(folder[0], style);
    return style == PathStyle::Windows && folder.size() == 3 && folder[1] == QLatin1Char(':')
        && isSlash(folder[2], style);
}

} // namespace

QString withTrailingSeparator(const QString &folder, PathStyle style)
{
    // "E:" alone is the drive's current folder, which is never what is meant: it gets its root.
    if (!folder.isEmpty() && isSlash(folder.back(), style))
        return folder;
    return folder + folderSeparator(style);
}

QString withoutTrailingSeparator(const QString &folder, PathStyle style)
{
    QString result = folder;
    while (result.size() > 1 && isSlash(result.back(), style) && !isRoot(result, style))
        result.chop(1);
    return result;
}

QString joinPath(const QString &folder, const QString &name, PathStyle style)
{
    return withTrailingSeparator(folder, style) + name;
}

SplitPath splitAtLastSeparator(const QString &path, PathStyle style)
{
    for (qsizetype i = path.size() - 1; i >= 0; --i) {
        if (isSplitPoint(path[i], style))
            return {path.left(i + 1), path.mid(i + 1)};
    }
    return {QString(), path};
}
