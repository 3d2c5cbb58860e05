#include "setting/TextExcerpt.h"

#include <QCoreApplication>

#include <algorithm>

namespace {

QString hexEscape(uint code)
{
    return QStringLiteral("\\x") + QString::number(code, 16).rightJustified(2, QLatin1Char('0')).toUpper();
}

QString escaped(QChar c)
{
    switch (c.unicode()) {
    case '\r':
        return QStringLiteral("\\r");
    case '\n':
        return QStringLiteral("\\n");
    case '\t':
        return QStringLiteral("\\t");
    default:
        break;
    }
    if (c.unicode() < 0x20 || c.unicode() == 0x7F)
        return hexEscape(c.unicode());
    return QString(c);
}

QString withLength(const QString &quoted, qsizetype length)
{
    return QCoreApplication::translate("TextExcerpt", "%1 (%2 characters)").arg(quoted).arg(length);
}

} // namespace

QString quotedExcerpt(QStringView text)
{
    qsizetype end = std::min(text.size(), ExcerptLength);
    // A pair of surrogates is one character: it is shown whole or not at all.
    if (end < text.size() && end > 0 && text[end - 1].isHighSurrogate())
        --end;
    QString shown;
    for (qsizetype i = 0; i < end; ++i)
        shown += escaped(text[i]);
    const QString quoted
        = QLatin1Char('"') + shown + (end < text.size() ? QStringLiteral("\u2026\"") : QStringLiteral("\""));
    return end < text.size() ? withLength(quoted, text.size()) : quoted;
}

QString quotedByteExcerpt(QByteArrayView bytes, qsizetype from)
{
    const qsizetype start = std::clamp<qsizetype>(from - ExcerptLength / 4, 0, bytes.size());
    const qsizetype end = std::min(bytes.size(), start + ExcerptLength);
    QString shown;
    for (qsizetype i = start; i < end; ++i) {
        const auto byte = static_cast<uchar>(bytes[i]);
        shown += byte >= 0x20 && byte < 0x7F ? QString(QLatin1Char(char(byte))) : hexEscape(byte);
    }
    return QLatin1Char('"') + (start > 0 ? QStringLiteral("\u2026") : QString()) + shown
        + (end < bytes.size() ? QStringLiteral("\u2026\"") : QStringLiteral("\""));
}
