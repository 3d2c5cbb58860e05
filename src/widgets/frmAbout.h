#pragma once

#include "widgets/SystemInfoProgram.h"

#include <QDialog>

class MsgBox;

/// The about box: product, version, and a way to the system's information program where the
/// system has one.
class frmAbout : public QDialog
{
    Q_OBJECT

public:
    /// `systemInfoProgram` is the system's information program, empty where there is none.
    frmAbout(MsgBox &msgBox, QWidget *parent,
             const QString &systemInfoProgram = findSystemInformationProgram());

    /// Starts the system information program, or says that there is none.
    void StartSysInfo();

private slots:
    void cmdOK_Click();
    void cmdSysInfo_Click();

private:
    MsgBox &m_msgBox;
    QString m_systemInfoProgram;
};
