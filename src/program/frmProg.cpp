#include "frmProg.h"

#include "ProgramNumberText.h"
#include "ProgramWindowTable.h"

#include <QCloseEvent>
#include <QLabel>
#include <QVBoxLayout>

frmProg::frmProg(AppContext &context, ProgramWindowTable &table, int slot, int programNumber, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_table(&table)
    , m_slot(slot)
    , m_programNumber(programNumber)
    , m_lblPrgNo(new QLabel(this))
{
    setObjectName(QStringLiteral("frmProg"));
    setAttribute(Qt::WA_DeleteOnClose);
    const QString number = ProgramNumberText::format(programNumber);
    setWindowTitle(number);
    m_lblPrgNo->setObjectName(QStringLiteral("lblPrgNo"));
    m_lblPrgNo->setText(QStringLiteral("Program No:") + number);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_lblPrgNo);
    layout->addStretch();
    resize(420, 300);
}

frmProg::~frmProg()
{
    if (m_table)
        m_table->release(m_slot);
}

void frmProg::closeEvent(QCloseEvent *event)
{
    QWidget::closeEvent(event);
    // The slot is free as soon as the window has agreed to close, not when it is deleted later.
    if (event->isAccepted() && m_table)
        m_table->release(m_slot);
}
