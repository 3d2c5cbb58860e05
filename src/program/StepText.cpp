#include "program/StepText.h"

#include "setting/NumberText.h"

namespace StepText {

namespace {

bool isLetter(QChar c, char upper)
{
    return c == QLatin1Char(upper) || c == QLatin1Char(upper + ('a' - 'A'));
}

// Letters only first, digits anywhere, a point only third and only in a wait.
bool charactersFit(const QString &text)
{
    const bool wait = isLetter(text[0], 'M');
    for (qsizetype i = 0; i < text.size(); ++i) {
        const QChar c = text[i];
        if (c.isDigit() && c.unicode() < 128)
            continue;
        if (i == 0 && (isLetter(c, 'A') || isLetter(c, 'M')))
            continue;
        if (i == 2 && c == QLatin1Char('.') && wait)
            continue;
        return false;
    }
    return true;
}

Entry accept(const QString &shown, int storedValue)
{
    return {true, shown, zeroPadded(storedValue, 4)};
}

} // namespace

Entry check(const QString &text, int sentenceLimit)
{
    if (text.isEmpty())
        return {true, QString(), QString()};
    if (text.size() >= 5 || !charactersFit(text))
        return {};
    const bool wait = isLetter(text[0], 'M');
    const bool sentence = !wait;
    const QString digits = text[0].isLetter() ? text.mid(1) : text;

    if (sentence) {
        // A number equal to the card's size is taken; sentence 000 cannot be typed.
        const int n = digits.toInt();
        if (n == 0 || n > sentenceLimit)
            return {};
        return accept(QLatin1Char('A') + zeroPadded(n, 3), n);
    }
    if (text.size() >= 3 && text[2] == QLatin1Char('.')) {
        if (text.size() < 4)
            return {};
        const int whole = text[1].digitValue();
        const int tenth = text[3].digitValue();
        const QString shown = QLatin1Char('M') + text.mid(1);
        return accept(shown, tenth == 0 ? 2000 + whole : 2200 + 10 * whole + tenth);
    }
    const int n = digits.toInt();
    if (n >= 128)
        return {};
    return accept(QLatin1Char('M') + zeroPadded(n, 3), 2000 + n);
}

} // namespace StepText
