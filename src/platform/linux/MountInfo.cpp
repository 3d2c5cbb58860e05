#include "platform/linux/MountInfo.h"

#include <QStringList>

namespace {

bool isOctalDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('7');
}

// The kernel writes blank, tab, newline and backslash in paths as \040, \011, \012 and \134: a
// backslash and exactly three octal digits for one byte. Anything else ("\-01", "\9", a cut-off
// "\04") is taken as it stands.
QString unescape(const QString &field)
{
    QString out;
    out.reserve(field.size());
    for (qsizetype i = 0; i < field.size(); ++i) {
        if (field[i] == QLatin1Char('\\') && i + 3 < field.size() && isOctalDigit(field[i + 1])
            && isOctalDigit(field[i + 2]) && isOctalDigit(field[i + 3]) && field[i + 1] <= QLatin1Char('3')) {
            const int code = (field[i + 1].unicode() - '0') * 64 + (field[i + 2].unicode() - '0') * 8
                + (field[i + 3].unicode() - '0');
            out += QChar(code);
            i += 3;
            continue;
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
