#pragma once

#include "MsgBox.h"

class QWidget;

/// Message boxes of the desktop program, shown over the active window.
class QtMsgBox : public MsgBox
{
public:
    Answer show(const QString &text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None) override;
};
