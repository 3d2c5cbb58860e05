#pragma once

#include <QString>

/// Every message and question to the operator goes through this, so that routines of the core
/// library can ask, the desktop program shows message boxes, tests script the answers and the
/// command-line tool answers from its flags.
class MsgBox
{
public:
    enum class Buttons { Ok, OkCancel, YesNo };
    enum class Icon { None, Exclamation, Question, Information, Critical };
    enum class Answer { Ok, Cancel, Yes, No };

    virtual ~MsgBox() = default;

    /// Shows the text and waits for the operator's answer.
    virtual Answer show(const QString &text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None) = 0;

    /// An OK/Cancel question without icon, answered OK.
    bool confirm(const QString &text) { return show(text, Buttons::OkCancel) == Answer::Ok; }
};
