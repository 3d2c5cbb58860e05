#include "widgets/EntryCheck.h"

#include <QFocusEvent>
#include <QLineEdit>
#include <QMdiSubWindow>

namespace {

/// Whether the window the field belongs to (a window of its own, or a document window of the main
/// window) is still open; the field itself may be on a page that is not showing.
bool formIsOpen(const QWidget *field)
{
    const QWidget *form = field;
    while (!form->isWindow() && !qobject_cast<const QMdiSubWindow *>(form->parentWidget()))
        form = form->parentWidget();
    return form->isVisible();
}

} // namespace

EntryCheck::EntryCheck(QLineEdit *field, std::function<bool()> check)
    : QObject(field)
    , m_field(field)
    , m_check(std::move(check))
{
    field->installEventFilter(this);
}

bool EntryCheck::checkPending()
{
    // Typing marks the field modified and any text the window sets clears it; the flag is cleared
    // first so that a message box's event loop cannot start the same check again.
    if (!m_field->isModified())
        return true;
    m_field->setModified(false);
    return m_check();
}

bool EntryCheck::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusOut) {
        // The focus leaves for another window (a message box, another program) or a menu: the
        // operator has not moved on, and the field is checked when they do.
        const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason
            && m_field->isModified()) {
            // A message box opened inside the focus move would leave the field that takes the
            // focus without its own focus events, so the check waits until the move is done.
            QMetaObject::invokeMethod(
                this,
                [this] {
                    if (formIsOpen(m_field))
                        checkPending();
                },
                Qt::QueuedConnection);
        }
    }
    return QObject::eventFilter(watched, event);
}

bool checkPendingEntries(const QWidget *window)
{
    bool accepted = true;
    for (EntryCheck *entry : window->findChildren<EntryCheck *>()) {
        if (!entry->checkPending())
            accepted = false;
    }
    return accepted;
}
