#pragma once

#include <QHBoxLayout>
#include <QLineEdit>
#include <QScrollBar>
#include <QString>

/// A line edit with its object name, for the windows' number and text boxes.
inline QLineEdit *namedLineEdit(const char *objectName, QWidget *parent)
{
    auto *edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(objectName));
    return edit;
}

/// The small vertical scroll bar that steps a number box up and down.
inline QScrollBar *numberBar(const char *objectName, const QString &accessibleName, QWidget *parent)
{
    auto *bar = new QScrollBar(Qt::Vertical, parent);
    bar->setObjectName(QLatin1String(objectName));
    bar->setAccessibleName(accessibleName);
    return bar;
}

/// A number box with its bar right beside it, as one fixed-size unit in a layout.
inline QWidget *numberBox(QLineEdit *text, QScrollBar *bar, QWidget *parent, int textWidth = 70)
{
    auto *box = new QWidget(parent);
    auto *row = new QHBoxLayout(box);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    text->setFixedWidth(textWidth);
    bar->setFixedHeight(text->sizeHint().height());
    row->addWidget(text);
    row->addWidget(bar);
    box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return box;
}
