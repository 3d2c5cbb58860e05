#pragma once

#include <QObject>

#include <functional>

class QLineEdit;
class QWidget;

/// The check of one entry field: run when the focus has left the field, once that focus move is
/// complete, and before a button uses what was typed. A field counts as checked until the operator
/// types into it again; a text the window sets itself needs no check.
class EntryCheck : public QObject
{
    Q_OBJECT

public:
    /// `check` tests the field's text, shows any message and stores the value; false when it
    /// refused the text.
    EntryCheck(QLineEdit *field, std::function<bool()> check);

    /// Runs the check when the text was typed since the last check; false when it was refused.
    bool checkPending();

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLineEdit *m_field;
    std::function<bool()> m_check;
};

/// Checks every field of `window` still holding typed text that was never checked; false when
/// one was refused, so the button that asked does not act on it.
bool checkPendingEntries(const QWidget *window);
