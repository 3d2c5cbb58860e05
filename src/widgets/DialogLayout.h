#pragma once

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QList>
#include <QPushButton>
#include <QString>

#include <initializer_list>

/// Enter on a button that has the focus presses it, as Space does: without auto-default, Qt
/// leaves Enter to the dialog's default button, and these dialogs have none.
class EnterPressesFocusedButton : public QObject
{
public:
    using QObject::QObject;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if (key == Qt::Key_Return || key == Qt::Key_Enter) {
                static_cast<QPushButton *>(watched)->click();
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }
};

/// A push button with its object name, for the dialogs' button rows.
inline QPushButton *namedButton(const QString &caption, const char *objectName, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(objectName));
    // Enter in an input belongs to that input: no button is the dialog's default.
    button->setAutoDefault(false);
    button->installEventFilter(new EnterPressesFocusedButton(button));
    return button;
}

/// Sets the Tab order to go through `widgets` one after the other, as the window is drawn rather
/// than in the order the controls were made.
inline void chainTabOrder(const QList<QWidget *> &widgets)
{
    for (qsizetype i = 1; i < widgets.size(); ++i)
        QWidget::setTabOrder(widgets[i - 1], widgets[i]);
}

/// The buttons of a dialog, right-aligned in one row.
inline QHBoxLayout *buttonRow(std::initializer_list<QWidget *> buttons)
{
    auto *row = new QHBoxLayout;
    row->addStretch();
    for (QWidget *button : buttons)
        row->addWidget(button);
    return row;
}
