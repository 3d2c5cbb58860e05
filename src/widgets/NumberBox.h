#pragma once

#include <QEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
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

/// The Up and Down keys in a number box do what the bar's arrows do, so the keyboard reaches
/// every value the mouse does.
class ArrowKeysStepBar : public QObject
{
public:
    ArrowKeysStepBar(QScrollBar *bar, QObject *parent)
        : QObject(parent)
        , m_bar(bar)
    { }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress) {
            const int key = static_cast<QKeyEvent *>(event)->key();
            if (key == Qt::Key_Up || key == Qt::Key_Down) {
                m_bar->triggerAction(key == Qt::Key_Up ? QAbstractSlider::SliderSingleStepSub
                                                       : QAbstractSlider::SliderSingleStepAdd);
                return true;
            }
        }
        return QObject::eventFilter(watched, event);
    }

private:
    QScrollBar *m_bar;
};

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
    text->installEventFilter(new ArrowKeysStepBar(bar, text));
    box->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    return box;
}
