#pragma once

#include <QObject>
#include <QString>

class EntryCheck;
class MsgBox;
class QLineEdit;
class QScrollBar;

/// Keeps a program number text box and its upside-down scroll bar in agreement: the bar rewrites
/// the text as "P" and three digits; a valid typed number moves the bar; an invalid one is refused
/// with "Incorrect value has been entered." and the text goes back to the bar's number.
class ProgramNumberField : public QObject
{
    Q_OBJECT

public:
    ProgramNumberField(QLineEdit *text, QScrollBar *bar, MsgBox &msgBox, QObject *parent);

    /// The number the bar stands at, 1 to 64.
    int number() const;
    QString text() const;
    void setNumber(int number);

    /// The check made when the focus has left the text box, on Enter and before the number is
    /// used: a typed text is checked once; false when it was refused.
    bool check();

private:
    void barMoved(int value);
    bool checkTyped();

    QLineEdit *m_text;
    QScrollBar *m_bar;
    MsgBox &m_msgBox;
    EntryCheck *m_entry;
};
