#include "widgets/QtMsgBox.h"

#include "widgets/MessageBoxFit.h"

#include <QApplication>
#include <QMainWindow>
#include <QMessageBox>
#include <QPointer>

#include <algorithm>

namespace {

QMessageBox::Icon iconFor(MsgBox::Icon icon)
{
    switch (icon) {
    case MsgBox::Icon::Exclamation:
        return QMessageBox::Warning;
    case MsgBox::Icon::Question:
        return QMessageBox::Question;
    case MsgBox::Icon::Information:
        return QMessageBox::Information;
    case MsgBox::Icon::Critical:
        return QMessageBox::Critical;
    case MsgBox::Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

QMessageBox::StandardButtons buttonsFor(MsgBox::Buttons buttons)
{
    switch (buttons) {
    case MsgBox::Buttons::OkCancel:
        return QMessageBox::Ok | QMessageBox::Cancel;
    case MsgBox::Buttons::YesNo:
        return QMessageBox::Yes | QMessageBox::No;
    case MsgBox::Buttons::Ok:
        break;
    }
    return QMessageBox::Ok;
}

/// What closing the box without a button (Escape, the title bar's close) means: the careful answer.
MsgBox::Answer dismissedAnswer(MsgBox::Buttons buttons)
{
    switch (buttons) {
    case MsgBox::Buttons::OkCancel:
        return MsgBox::Answer::Cancel;
    case MsgBox::Buttons::YesNo:
        return MsgBox::Answer::No;
    case MsgBox::Buttons::Ok:
        break;
    }
    return MsgBox::Answer::Ok;
}

} // namespace

QWidget *frontWindow(QWidget *fallback)
{
    // A progress window need not be the active one (a window manager may not give it the focus),
    // yet it covers the windows below it: a modal window in front comes first.
    if (QWidget *modal = QApplication::activeModalWidget())
        return modal;
    if (QWidget *active = QApplication::activeWindow())
        return active;
    if (fallback)
        return fallback->window();
    // Another program has the focus: the box still belongs over the main window.
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto main = std::find_if(windows.begin(), windows.end(), [](const QWidget *window) {
        return window->isVisible() && qobject_cast<const QMainWindow *>(window);
    });
    return main != windows.end() ? *main : nullptr;
}

MsgBox::Answer QtMsgBox::show(const QString &text, Buttons buttons, Icon icon)
{
    const QPointer<QWidget> under = frontWindow();
    QMessageBox box(iconFor(icon), QStringLiteral("DQ-480"), text, buttonsFor(buttons), under);
    setTextWithinScreen(box, text);
    box.setDefaultButton(buttons == Buttons::YesNo ? QMessageBox::Yes : QMessageBox::Ok);
    box.setEscapeButton(buttons == Buttons::OkCancel    ? QMessageBox::Cancel
                            : buttons == Buttons::YesNo ? QMessageBox::No
                                                        : QMessageBox::Ok);
    const int answer = box.exec();
    // Without a window manager nothing gives the focus back to the window under the box, and its
    // fields would go on without focus events: the next one typed into would never be checked.
    if (under)
        under->activateWindow();
    switch (answer) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Cancel:
        return Answer::Cancel;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        return dismissedAnswer(buttons);
    }
}
