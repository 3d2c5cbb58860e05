#pragma once

#include <QString>

/// A program's step as it is stored, four decimal digits, read as the device plays it and as the
/// step window shows it.
struct StoredStep
{
    enum class Kind { None, Sentence, Wait };

    Kind kind = Kind::None;
    int sentence = 0; // a sentence step's number, 000-999
    double waitSeconds = 0.0; // a wait step's length
    QString shown; // "A012", "M1.5", "M5.0", "M120"; empty for no step
};

/// "0NNN" plays sentence NNN; "22XY" waits X.Y seconds; "2NNN" waits NNN seconds, shown as "M" and
/// NNN, or as "MN.0" below 10. Any other text, the empty one included, is no step: the device has
/// nothing to play there and the step window drops it when it loads.
StoredStep decodeStep(const QString &stored);
