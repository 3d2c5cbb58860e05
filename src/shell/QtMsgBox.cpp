#include "QtMsgBox.h"

#include "MessageBoxFit.h"

#include <QApplication>
#include <QMessageBox>

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

MsgBox::Answer QtMsgBox::show(const QString &text, Buttons buttons, Icon icon)
{
    QMessageBox box(iconFor(icon), QStringLiteral("DQ-480"), text, buttonsFor(buttons),
                    QApplication::activeWindow());
    setTextWithinScreen(box, text);
    box.setDefaultButton(buttons == Buttons::YesNo ? QMessageBox::Yes : QMessageBox::Ok);
    box.setEscapeButton(buttons == Buttons::OkCancel    ? QMessageBox::Cancel
                            : buttons == Buttons::YesNo ? QMessageBox::No
                                                        : QMessageBox::Ok);
    switch (box.exec()) {
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
