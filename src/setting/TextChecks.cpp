#include "setting/TextChecks.h"

#include "setting/TextEncoding.h"

#include <QList>

#include <algorithm>

bool IsHexText(int mode, QStringView text)
{
    if (mode != 0)
        return true;
    for (const QChar c : text) {
        const char16_t u = c.unicode();
        const bool hex = (u >= '0' && u <= '9') || (u >= 'A' && u <= 'F') || (u >= 'a' && u <= 'f');
        if (!hex)
            return false;
    }
    return true;
}

std::optional<qint32> HexTextToLong(QStringView text)
{
    if (text.size() >= 8)
        return std::nullopt;
    qint32 sum = 0;
    qint32 weight = 1;
    for (qsizetype i = text.size() - 1; i >= 0; --i) {
        const char16_t u = text[i].unicode();
        if (u >= '0' && u <= '9')
            sum += (u - '0') * weight;
        else if (u >= 'A' && u <= 'F')
            sum += (u - 'A' + 10) * weight;
        else
            sum = 0;
        weight *= 16;
    }
    return sum;
}

bool IsDecimalText(QStringView text)
{
    for (const QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return false;
    }
    return true;
}

bool IsValidFileNameText(QStringView text)
{
    static constexpr char16_t forbidden[] = u"\\/:*?<>|,\";";
    for (const QChar c : text) {
        for (const char16_t f : forbidden) {
            if (f != 0 && c.unicode() == f)
                return false;
        }
    }
    return true;
}

bool IsUsableNameText(QStringView text)
{
    if (!IsValidFileNameText(text))
        return false;
    if (std::any_of(text.begin(), text.end(),
                    [](QChar c) { return c.unicode() < 0x20 || c.unicode() == 0x7F; }))
        return false;
    // Windows drops trailing blanks and full stops, so ". ." or "..." would open the folder or its
    // parent there.
    QStringView kept = text;
    while (!kept.isEmpty() && (kept.back() == QLatin1Char(' ') || kept.back() == QLatin1Char('.')))
        kept.chop(1);
    return !kept.isEmpty() || !text.contains(QLatin1Char('.'));
}

bool IsStorableExplanation(QStringView text)
{
    const QList<QStringView> lines = text.split(u"\r\n");
    constexpr qsizetype MaxLines = 12;
    if (lines.size() > MaxLines)
        return false;
    if (lines.size() > 1 && lines.first().isEmpty())
        return false;
    for (qsizetype i = 0; i + 1 < lines.size(); ++i) {
        if (lines[i].endsWith(QLatin1Char(',')))
            return false;
    }
    return true;
}

bool IsValidNameInCodePage(QStringView text, const TextEncoding &encoding)
{
    return IsValidFileNameText(text) && encoding.firstUnencodable(text).isEmpty();
}
