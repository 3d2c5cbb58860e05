#include "setting/StoredStep.h"

#include "setting/TextChecks.h"

StoredStep decodeStep(const QString &stored)
{
    StoredStep step;
    if (stored.size() != 4 || !IsDecimalText(stored))
        return step;
    const QString digits = stored.mid(1);
    if (stored[0] == QLatin1Char('0')) {
        step.kind = StoredStep::Kind::Sentence;
        step.sentence = digits.toInt();
        step.shown = QLatin1Char('A') + digits;
        return step;
    }
    if (stored[0] != QLatin1Char('2'))
        return step;
    step.kind = StoredStep::Kind::Wait;
    if (stored[1] == QLatin1Char('2')) {
        step.waitSeconds = stored[2].digitValue() + stored[3].digitValue() / 10.0;
        step.shown = QLatin1Char('M') + stored.mid(2, 1) + QLatin1Char('.') + stored.mid(3, 1);
        return step;
    }
    const int value = digits.toInt();
    step.waitSeconds = value;
    // Kept on purpose: a whole wait below ten shows with a tenth (M5.0), though typed it showed as
    // three digits (M005).
    step.shown
        = value < 10 ? QLatin1Char('M') + stored.mid(3, 1) + QLatin1String(".0") : QLatin1Char('M') + digits;
    return step;
}
