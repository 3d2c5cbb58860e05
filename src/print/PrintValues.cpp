#include "PrintValues.h"

namespace PrintValues {

namespace {

int methodBits(qint32 option)
{
    return option & 0xE000;
}

} // namespace

QString methodText(qint32 option)
{
    switch (methodBits(option)) {
    case 0x2000:
        return QStringLiteral("Continuous");
    case 0x4000:
        return QStringLiteral("Single");
    case 0x6000:
        return QStringLiteral("Repeat");
    case 0xC000:
        return QStringLiteral("Endless");
    default:
        return QStringLiteral("Setting Data Error");
    }
}

QString outputLevelText(qint32 option)
{
    return QString::number(((option & 0x0700) >> 8) + 1);
}

QString repeatCountText(qint16 count, qint32 option)
{
    if (count == 0 && methodBits(option) == 0x6000)
        return QStringLiteral("Endless");
    return QString::number(count);
}

QString repeatIntervalText(qint16 interval, qint32 option)
{
    if (methodBits(option) == 0xC000) {
        const int field = option & 0x0038;
        const int seconds = (field % 8 == 0 && field >= 8 && field <= 40) ? field / 8 : 0;
        return seconds == 0 ? QStringLiteral("OFF") : QString::number(seconds) + QStringLiteral("Sec");
    }
    if (interval <= 0)
        return QStringLiteral("OFF");
    if (interval <= 5)
        return QString::number(interval * 10) + QStringLiteral("Sec");
    return QString::number(interval - 5) + QStringLiteral("Minute");
}

QString busyText(qint32 option)
{
    const int method = methodBits(option);
    if (method != 0x4000 && method != 0x6000)
        return QString();
    return (option & 1) ? QStringLiteral("ON") : QStringLiteral("OFF");
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
