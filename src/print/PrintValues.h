#pragma once

#include <QString>

/// How the print-outs show a program's stored values.
namespace PrintValues {

/// "Continuous", "Single", "Repeat", "Endless", or "Setting Data Error" for another method value.
QString methodText(qint32 option);
/// The output level field plus one ("1"-"8").
QString outputLevelText(qint32 option);
/// The count, or "Endless" for 0 with the Repeat method.
QString repeatCountText(qint16 count, qint32 option);
/// "OFF", "10Sec" to "60Sec", "NMinute"; for Endless the play interval in seconds from the option word.
QString repeatIntervalText(qint16 interval, qint32 option);
/// "ON" or "OFF" for Single and Repeat programs; empty for the others.
QString busyText(qint32 option);
/// "A001" plays sentence 1, "M005" waits 5, "M1.5" waits 1.5; empty for an empty step.
QString stepText(const QString &stored);

} // namespace PrintValues
