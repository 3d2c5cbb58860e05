#include "print/PrintValues.h"

#include "setting/ProgramOptionWord.h"
#include "setting/RepeatInterval.h"

#include <QCoreApplication>

namespace PrintValues {

namespace Word = ProgramOptionWord;

namespace {

int methodBits(qint32 option)
{
    return option & Word::MethodMask;
}

} // namespace

QString methodText(qint32 option)
{
    switch (methodBits(option)) {
    case Word::MethodBits[Word::Continuous]:
        return QCoreApplication::translate("PrintOut", "Continuous");
    case Word::MethodBits[Word::SingleProgram]:
        return QCoreApplication::translate("PrintOut", "Single");
    case Word::MethodBits[Word::Repeat]:
        return QCoreApplication::translate("PrintOut", "Repeat");
    case Word::MethodBits[Word::Endless]:
        return QCoreApplication::translate("PrintOut", "Endless");
    default:
        return QCoreApplication::translate("PrintOut", "Setting Data Error");
    }
}

QString outputLevelText(qint32 option)
{
    return QString::number(Word::outputLevel(option));
}

QString repeatCountText(qint16 count, qint32 option)
{
    if (count == 0 && methodBits(option) == Word::MethodBits[Word::Repeat])
        return QCoreApplication::translate("PrintOut", "Endless");
    return QString::number(count);
}

QString repeatIntervalText(qint16 interval, qint32 option)
{
    if (methodBits(option) == Word::MethodBits[Word::Endless]) {
        const int seconds = Word::endlessSeconds(option).value_or(0);
        return seconds == 0 ? QCoreApplication::translate("PrintOut", "OFF")
                            : QString::number(seconds) + QCoreApplication::translate("PrintOut", "Sec");
    }
    const RepeatInterval shown = repeatInterval(interval);
    switch (shown.unit) {
    case RepeatInterval::Unit::Seconds:
        return QString::number(shown.amount) + QCoreApplication::translate("PrintOut", "Sec");
    case RepeatInterval::Unit::Minutes:
        return QString::number(shown.amount) + QCoreApplication::translate("PrintOut", "Minute");
    case RepeatInterval::Unit::Off:
        break;
    }
    return QCoreApplication::translate("PrintOut", "OFF");
}

QString busyText(qint32 option)
{
    const int method = methodBits(option);
    if (method != Word::MethodBits[Word::SingleProgram] && method != Word::MethodBits[Word::Repeat])
        return QString();
    return (option & Word::BusyBit) ? QCoreApplication::translate("PrintOut", "ON")
                                    : QCoreApplication::translate("PrintOut", "OFF");
}

QString stepText(const QString &stored)
{
    if (stored.isEmpty())
        return QString();
    bool ok = false;
    const int value = stored.toInt(&ok);
    if (!ok)
        return stored;
    const QString digits = stored.rightJustified(4, QLatin1Char('0'));
    if (value < 2000)
        return QLatin1Char('A') + digits.right(3);
    if (value <= 2200)
        return QLatin1Char('M') + digits.right(3);
    return QLatin1Char('M') + digits.mid(2, 1) + QLatin1Char('.') + digits.right(1);
}

} // namespace PrintValues
