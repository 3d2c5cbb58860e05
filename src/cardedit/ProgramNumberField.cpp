#include "cardedit/ProgramNumberField.h"

#include "program/ProgramNumberText.h"
#include "setting/MsgBox.h"
#include "setting/OperatorMessages.h"
#include "widgets/EntryCheck.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QSignalBlocker>

ProgramNumberField::ProgramNumberField(QLineEdit *text, QScrollBar *bar, MsgBox &msgBox, QObject *parent)
    : QObject(parent)
    , m_text(text)
    , m_bar(bar)
    , m_msgBox(msgBox)
    , m_entry(new EntryCheck(text, [this] { return checkTyped(); }))
{
    m_bar->setRange(ProgramNumberText::barFromNumber(ProgramNumberText::Last),
                    ProgramNumberText::barFromNumber(ProgramNumberText::First));
    m_bar->setSingleStep(1);
    m_bar->setPageStep(8);
    connect(m_bar, &QScrollBar::valueChanged, this, &ProgramNumberField::barMoved);
}

int ProgramNumberField::number() const
{
    return ProgramNumberText::numberFromBar(m_bar->value());
}

QString ProgramNumberField::text() const
{
    return m_text->text();
}

void ProgramNumberField::setNumber(int number)
{
    const QSignalBlocker block(m_bar);
    m_bar->setValue(ProgramNumberText::barFromNumber(number));
    m_text->setText(ProgramNumberText::format(number));
}

void ProgramNumberField::barMoved(int value)
{
    m_text->setText(ProgramNumberText::format(ProgramNumberText::numberFromBar(value)));
}

bool ProgramNumberField::check()
{
    return m_entry->checkPending();
}

bool ProgramNumberField::checkTyped()
{
    const std::optional<int> typed = ProgramNumberText::parse(m_text->text());
    if (!typed) {
        m_text->setText(ProgramNumberText::format(number()));
        m_msgBox.show(incorrectValueMessage());
        return false;
    }
    // The typed text stays as the operator wrote it ("p07"); the bar follows it.
    const QSignalBlocker block(m_bar);
    m_bar->setValue(ProgramNumberText::barFromNumber(*typed));
    return true;
}
