#pragma once

#include <QString>

/// Steps as the operator types them, against their stored four-digit form: "A012" plays sentence
/// 12 (stored 0012); "M005" waits 5 (stored 2005, shown again as "M5.0"); "M1.5" waits 1.5 (stored
/// 2215). How a stored step is shown is `decodeStep` (setting/StoredStep.h).
namespace StepText {

struct Entry
{
    bool accepted = false;
    QString shown; // the box's text after the check
    QString stored; // empty: the slot is cleared
};

/// The check made when a step box loses the focus. `sentenceLimit` is 128 or 512.
Entry check(const QString &text, int sentenceLimit);

/// The default step of a program without steps: sentence 000.
inline QString defaultStep()
{
    return QStringLiteral("0000");
}

} // namespace StepText
