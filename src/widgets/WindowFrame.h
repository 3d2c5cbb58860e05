#pragma once

#include <QMdiSubWindow>
#include <QWidget>

/// Closes a window together with its frame when it lives inside the main window's MDI area, so
/// that no empty frame is left behind; a window without a frame just closes.
inline bool closeWindowFrame(QWidget *window)
{
    if (auto *frame = qobject_cast<QMdiSubWindow *>(window->parentWidget()))
        return frame->close();
    return window->close();
}
