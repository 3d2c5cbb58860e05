#include "MountInfo.h"

#include <QStringList>

namespace {

// The kernel writes blank, tab, newline and backslash in paths as \040, \011, \012 and \134.
QString unescape(const QString &field)
{
    QString out;
    out.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field[i] == QLatin1Char('\\') && i + 3 < field.size()) {
            bool ok = false;
            const int code = field.mid(i + 1, 3).toInt(&ok, 8);
            if (ok) {
                out += QChar(code);
                i += 3;
                continue;
            }
        }
        out += field[i];
    }
    return out;
}

} // namespace

QList<MountEntry> parseMountInfo(const QString &text)
{
    QList<MountEntry> mounts;
    for (const QString &line : text.split(QLatin1Char('\n'), Qt::SkipEmptyParts)) {
        const QStringList fields = line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const qsizetype separator = fields.indexOf(QStringLiteral("-"));
        if (fields.size() < 6 || separator < 6 || separator + 2 >= fields.size())
            continue;
        const QStringList device = fields[2].split(QLatin1Char(':'));
        if (device.size() != 2)
            continue;
        MountEntry entry;
        entry.major = device[0].toInt();
        entry.minor = device[1].toInt();
        entry.mountPoint = unescape(fields[4]);
        entry.fsType = fields[separator + 1];
        entry.source = unescape(fields[separator + 2]);
        mounts.append(entry);
    }
    return mounts;
}
