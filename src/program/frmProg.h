#pragma once

#include "AppContext.h"

#include <QPointer>
#include <QWidget>

class ProgramWindowTable;
class QLabel;

/// The program edit window of one program. It holds its slot in the program window table while
/// open and gives it back when it closes.
class frmProg : public QWidget
{
    Q_OBJECT

public:
    frmProg(AppContext &context, ProgramWindowTable &table, int slot, int programNumber,
            QWidget *parent = nullptr);
    ~frmProg() override;

    int programNumber() const { return m_programNumber; }

protected:
    void closeEvent(QCloseEvent *event) override;

private:
    AppContext &m_context;
    QPointer<ProgramWindowTable> m_table;
    int m_slot;
    int m_programNumber;
    QLabel *m_lblPrgNo;
};
