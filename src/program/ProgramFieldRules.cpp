#include "program/ProgramFieldRules.h"

#include "setting/TextChecks.h"

#include <QCoreApplication>

namespace ProgramFieldRules {

namespace {

const QString Off = QStringLiteral("OFF");
// Shown in the repeat count box and accepted back from it, in the operator's language.
QString endlessText()
{
    return QCoreApplication::translate("ProgramFieldRules", "Endless");
}

// A decimal text as a number; long texts count as too large rather than overflowing.
qint64 numberOf(const QString &text)
{
    return text.size() > 9 ? 1'000'000'000 : text.toLongLong();
}

Interval endlessSecondsShown(int seconds)
{
    Interval result;
    result.endlessSeconds = seconds;
    result.text = seconds == 0 ? Off : QString::number(seconds);
    result.barValue = SecondsOffBar - seconds;
    return result;
}

} // namespace

Interval secondsBarMoved(int value, bool endless)
{
    if (value <= 0)
        value = SecondsOffBar;
    else if (value >= SecondsBarMax)
        value = endless ? 2 : 1;
    int tens = SecondsBarMax - (value + 1);
    if (endless && tens >= 6) {
        value = SecondsOffBar;
        tens = 0;
    }
    if (endless && tens == 0) {
        // The Endless bar at OFF only shows it: the play interval in the option word stays until
        // the box is checked, so a unit change to seconds keeps the stored play interval.
        Interval result;
        result.text = Off;
        result.barValue = value;
        result.stores = false;
        return result;
    }
    if (endless)
        return endlessSecondsShown(tens);
    // OFF is stored as well as shown, so the box and the data never disagree.
    Interval result;
    result.barValue = value;
    result.text = tens == 0 ? Off : QString::number(tens * 10);
    result.repeatInterval = static_cast<qint16>(tens);
    return result;
}

Interval minutesBarMoved(int value)
{
    if (value <= 0)
        value = TwoMinutesBar;
    else if (value >= 99)
        value = 1;
    const int minutes = MinutesBarMax - value;
    Interval result;
    result.barValue = value;
    result.text = QString::number(minutes);
    result.repeatInterval = static_cast<qint16>(minutes + 5);
    return result;
}

ShownInterval shownInterval(int stored, int minutesFrom)
{
    if (stored < minutesFrom)
        return {false, QString::number(stored * 10), qBound(0, SecondsOffBar - stored, SecondsBarMax)};
    const int minutes = stored - 5;
    return {true, QString::number(minutes), qBound(0, MinutesBarMax - minutes, MinutesBarMax)};
}

Interval checkInterval(const QString &typed, bool minutes, bool endless)
{
    QString text = typed;
    bool refused = false;
    if (text.isEmpty() || (text != Off && !IsDecimalText(text))) {
        // A refused entry goes back to 2 minutes, or to OFF in seconds.
        text = minutes ? QStringLiteral("2") : Off;
        refused = true;
    }
    const qint64 value = text == Off ? 0 : numberOf(text);
    Interval result;
    if (minutes) {
        if (text == Off || value < 2 || value > 99) {
            result = minutesBarMoved(TwoMinutesBar);
            refused = true;
        } else {
            result = minutesBarMoved(MinutesBarMax - static_cast<int>(value));
        }
    } else if (!endless) {
        const int tens = static_cast<int>(qMin<qint64>(value / 10, 6));
        result = secondsBarMoved(SecondsOffBar - tens, false);
    } else {
        result = endlessSecondsShown(value >= 1 && value <= 5 ? static_cast<int>(value) : 0);
    }
    result.refused = refused;
    return result;
}

RepeatCount countBarMoved(int value)
{
    if (value <= 0)
        value = EndlessCountBar;
    else if (value >= CountBarMax)
        value = 1;
    RepeatCount result;
    result.barValue = value;
    result.count = static_cast<qint16>(CountBarMax - (value + 1));
    result.text = result.count == 0 ? endlessText() : QString::number(result.count);
    return result;
}

RepeatCount checkRepeatCount(const QString &typed)
{
    QString text = typed;
    bool refused = false;
    if (text.isEmpty() || (text != endlessText() && !IsDecimalText(text))) {
        text = QStringLiteral("1");
        refused = true;
    }
    RepeatCount result;
    const qint64 value = text == endlessText() ? 0 : numberOf(text);
    if (value == 0)
        result = countBarMoved(EndlessCountBar);
    else if (value <= 128)
        result = countBarMoved(EndlessCountBar - static_cast<int>(value));
    else
        result = countBarMoved(EndlessCountBar - 1); // too many: 1, without a message
    result.refused = refused;
    return result;
}

int levelFromBar(int value)
{
    if (value <= 0)
        value = 8;
    else if (value >= 9)
        value = 1;
    return 9 - value;
}

std::optional<int> parseLevel(const QString &text)
{
    if (text.size() != 1 || text[0] < QLatin1Char('1') || text[0] > QLatin1Char('8'))
        return std::nullopt;
    return text[0].unicode() - '0';
}

} // namespace ProgramFieldRules
