#pragma once

#include <QDialog>

class MsgBox;

/// The about box: product, version, and a way to the system's information program where the
/// system has one.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    frmAbout(MsgBox &msgBox, QWidget *parent);

    /// Starts the system information program, or says that there is none.
    void StartSysInfo();

private slots:
    void cmdOK_Click();
    void cmdSysInfo_Click();

private:
    MsgBox &m_msgBox;
};
