#include "PathText.h"

QChar folderSeparator()
{
#ifdef Q_OS_WIN
    return QLatin1Char('\\');
#else
    return QLatin1Char('/');
#endif
}

namespace {

bool isSeparator(QChar c)
{
#ifdef Q_OS_WIN
    return c == QLatin1Char('\\') || c == QLatin1Char('/') || c == QLatin1Char(':');
#else
    return c == QLatin1Char('/');
#endif
}

} // namespace

QString withTrailingSeparator(const QString &folder)
{
    if (!folder.isEmpty() && isSeparator(folder.back()))
        return folder;
    return folder + folderSeparator();
}

QString withoutTrailingSeparator(const QString &folder)
{
    QString result = folder;
    while (result.size() > 1 && isSeparator(result.back()) && result.back() != QLatin1Char(':'))
        result.chop(1);
    return result;
}

QString joinPath(const QString &folder, const QString &name)
{
    return withTrailingSeparator(folder) + name;
}

SplitPath splitAtLastSeparator(const QString &path)
{
    for (qsizetype i = path.size() - 1; i >= 0; --i) {
        if (isSeparator(path[i]))
            return {path.left(i + 1), path.mid(i + 1)};
    }
    return {QString(), path};
}
