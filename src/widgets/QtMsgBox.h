#pragma once

#include "setting/MsgBox.h"

class QWidget;

/// The window a message or a small dialog goes over: the modal window in front (a progress
/// window), else the active window, else `fallback`'s window, else the main window.
QWidget *frontWindow(QWidget *fallback = nullptr);

/// Message boxes of the desktop program, shown over the window in front.
class QtMsgBox : public MsgBox
{
public:
    Answer show(const QString &text, Buttons buttons = Buttons::Ok, Icon icon = Icon::None) override;
};
