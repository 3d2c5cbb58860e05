#pragma once

#include <QHBoxLayout>
#include <QPushButton>
#include <QString>

#include <initializer_list>

/// A push button with its object name, for the dialogs' button rows.
inline QPushButton *namedButton(const QString &caption, const char *objectName, QWidget *parent)
{
    auto *button = new QPushButton(caption, parent);
    button->setObjectName(QLatin1String(objectName));
    // Enter belongs to the input that has the focus; a dialog's button is pressed by click or Space.
    button->setAutoDefault(false);
    return button;
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
