#pragma once

#include "MsgBox.h"

#include <QTextStream>

/// Messages on the terminal. Questions take the answer given on the command line (--yes or --no);
/// without one they are asked, and no answer (end of input) counts as No.
class TerminalMsgBox : public MsgBox
{
public:
    enum class Preset { Ask, Yes, No };

    TerminalMsgBox(QTextStream &out, Preset preset);
    Answer show(const QString &text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None) override;

private:
    QTextStream &m_out;
    Preset m_preset;
};
