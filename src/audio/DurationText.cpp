#include "audio/AudioInfo.h"

#include <algorithm>

QString formatDuration(double seconds)
{
    const qint64 tenths = qRound64(std::max(0.0, seconds) * 10.0);
    return QStringLiteral("%1:%2.%3")
        .arg(tenths / 600)
        .arg((tenths / 10) % 60, 2, 10, QLatin1Char('0'))
        .arg(tenths % 10);
}
