#pragma once

#include "setting/MsgBox.h"

#include <QTextStream>

/// Messages on the terminal. Questions take the answer given on the command line (--yes or --no);
/// without one they are asked until the answer is y or n. No answer at all (end of input, as when
/// there is no terminal) counts as No, and says why.
class TerminalMsgBox : public MsgBox
{
public:
    enum class Preset { Ask, Yes, No };

    TerminalMsgBox(QTextStream &out, QTextStream &err, Preset preset);
    Answer show(const QString &text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None) override;

private:
    /// Reads y or n from the input; false also when the input has ended.
    bool askYes();

    QTextStream &m_out;
    QTextStream &m_err;
    Preset m_preset;
};
