#pragma once

#include "widgets/AppContext.h"
#include "widgets/QtMsgBox.h"

#include <QApplication>
#include <QMessageBox>
#include <QPointer>
#include <QTest>
#include <QTimer>

/// The operator at the program's real message boxes: each box that comes to the front
/// (QApplication::activeModalWidget) is read and answered with a real key, Enter unless a test
/// queues other keys. No window manager gives the focus back afterwards. Keeps each box's text and
/// the window it was shown over.
class RealBoxes : public QObject
{
public:
    RealBoxes()
    {
        connect(&m_poll, &QTimer::timeout, this, [this] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box || box == m_answered || !box->isVisible())
                return;
            m_answered = box;
            shown << box->text();
            over << (box->parentWidget() ? box->parentWidget()->objectName() : QString());
            QTest::keyClick(box, keys.isEmpty() ? Qt::Key_Return : keys.takeFirst());
        });
        m_poll.start(5);
    }

    QtMsgBox msgBox;
    QList<Qt::Key> keys; // the keys for the next boxes; Enter once they are used up
    QStringList shown;
    QStringList over; // the object name of the window each box went over

private:
    QTimer m_poll;
    QPointer<QMessageBox> m_answered;
};

/// A window's context, with the real message boxes in place of the scripted ones.
inline AppContext withRealBoxes(const AppContext &context, RealBoxes &boxes)
{
    return AppContext {context.state, boxes.msgBox, context.fileDialogs, context.drives};
}
