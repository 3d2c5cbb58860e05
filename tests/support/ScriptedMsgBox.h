#pragma once

#include "setting/MsgBox.h"

#include <QList>
#include <QStringList>

#include <functional>

/// Answers message boxes from a queue and keeps every text shown, so a test asserts the exact
/// messages and that no unexpected box appeared. With the queue empty, a box is answered as the
/// operator's Escape would (Cancel, No or OK) and counted as unexpected.
class ScriptedMsgBox : public MsgBox
{
public:
    Answer show(const QString &text, Buttons buttons = Buttons::Ok, Icon = Icon::None) override
    {
        shown.append(text);
        if (onShow)
            onShow(text);
        if (buttons == Buttons::Ok && answerOkBoxes)
            return Answer::Ok;
        if (!answers.isEmpty())
            return answers.takeFirst();
        unexpected.append(text);
        return buttons == Buttons::OkCancel ? Answer::Cancel
            : buttons == Buttons::YesNo     ? Answer::No
                                            : Answer::Ok;
    }

    /// The answers for the next boxes, in order.
    void script(std::initializer_list<Answer> next) { answers.append(next); }

    /// Answer boxes with only an OK button without a script (questions still need one).
    bool answerOkBoxes = false;
    /// Called with each text as its box opens, to look at what the windows show behind it.
    std::function<void(const QString &)> onShow;
    QList<Answer> answers;
    QStringList shown;
    QStringList unexpected;
};

/// Fails the test when a box came that no answer was queued for, naming each such box's text.
#define VERIFY_NO_UNEXPECTED_BOX(box) \
    QVERIFY2((box).unexpected.isEmpty(), qPrintable((box).unexpected.join(QLatin1Char('|'))))
