#include "QtMsgBox.h"

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

} // namespace

MsgBox::Answer QtMsgBox::show(const QString &text, Buttons buttons, Icon icon)
{
    QMessageBox box(iconFor(icon), QStringLiteral("DQ-480"), text, QMessageBox::NoButton,
                    QApplication::activeWindow());
    switch (buttons) {
    case Buttons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case Buttons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        box.setDefaultButton(QMessageBox::Ok);
        break;
    case Buttons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setDefaultButton(QMessageBox::Yes);
        break;
    }
    switch (box.exec()) {
    case QMessageBox::Cancel:
        return Answer::Cancel;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    default:
        // Escape on an OK/Cancel box counts as Cancel; on a lone OK box it is OK.
        return buttons == Buttons::OkCancel ? Answer::Cancel
            : buttons == Buttons::YesNo     ? Answer::No
                                            : Answer::Ok;
    }
}
