#pragma once

#include <QString>

/// Steps as the operator reads and types them, against their stored four-digit form:
/// "A012" plays sentence 12 (stored 0012); "M005" waits 5 (stored 2005, shown again as "M5.0");
/// "M1.5" waits 1.5 (stored 2215).
namespace StepText {

/// The text a stored step is shown as; empty for an empty slot or a form outside the table
/// (such a step is dropped when the step window loads).
QString decode(const QString &stored);

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
