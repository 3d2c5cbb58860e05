#include "setting/NumberText.h"

#include <algorithm>
#include <cmath>
#include <limits>

QString zeroPadded(qint64 value, int digits)
{
    const QString magnitude
        = QString::number(value < 0 ? -value : value).rightJustified(digits, QLatin1Char('0'));
    return value < 0 ? QLatin1Char('-') + magnitude : magnitude;
}

namespace {

bool isDigit(QChar c)
{
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// A number as the classic numeric test accepts it in these files: blanks around, a sign, digits with
// an optional decimal point, an optional exponent. At least one digit.
std::optional<double> readNumber(QStringView text)
{
    const QStringView t = text.trimmed();
    qsizetype i = 0;
    const qsizetype n = t.size();
    if (i < n && (t[i] == QLatin1Char('+') || t[i] == QLatin1Char('-')))
        ++i;
    qsizetype digits = 0;
    while (i < n && isDigit(t[i]))
        ++i, ++digits;
    if (i < n && t[i] == QLatin1Char('.')) {
        ++i;
        while (i < n && isDigit(t[i]))
            ++i, ++digits;
    }
    if (digits == 0)
        return std::nullopt;
    if (i < n && (t[i] == QLatin1Char('e') || t[i] == QLatin1Char('E'))) {
        ++i;
        if (i < n && (t[i] == QLatin1Char('+') || t[i] == QLatin1Char('-')))
            ++i;
        qsizetype expDigits = 0;
        while (i < n && isDigit(t[i]))
            ++i, ++expDigits;
        if (expDigits == 0)
            return std::nullopt;
    }
    if (i != n)
        return std::nullopt;
    bool ok = false;
    const double value = t.toString().toDouble(&ok);
    if (!ok || !std::isfinite(value))
        return std::nullopt;
    return value;
}

} // namespace

QString applyZeroPattern(QStringView text, int digits)
{
    // Nearly every field in a file is plain digits: pad them without the general number parse.
    if (!text.isEmpty() && text.size() <= digits && std::all_of(text.begin(), text.end(), isDigit)) {
        QString padded(digits - text.size(), QLatin1Char('0'));
        padded += text;
        return padded;
    }
    const std::optional<double> number = readNumber(text);
    // Values beyond 15 digits cannot be shown exactly; such a text is kept as written.
    if (!number || std::fabs(*number) >= 1e15)
        return text.toString();
    const double rounded = std::round(*number); // halves away from zero
    return zeroPadded(static_cast<qint64>(rounded), digits);
}

std::optional<qint32> leadingNumber(QStringView text)
{
    qsizetype i = 0;
    const qsizetype n = text.size();
    while (i < n && (text[i] == QLatin1Char(' ') || text[i] == QLatin1Char('\t')))
        ++i;
    bool negative = false;
    if (i < n && (text[i] == QLatin1Char('+') || text[i] == QLatin1Char('-'))) {
        negative = text[i] == QLatin1Char('-');
        ++i;
    }
    qint64 value = 0;
    for (; i < n && isDigit(text[i]); ++i) {
        value = value * 10 + (text[i].unicode() - '0');
        if (value > std::numeric_limits<qint32>::max())
            return std::nullopt;
    }
    return static_cast<qint32>(negative ? -value : value);
}
