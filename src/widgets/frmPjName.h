#pragma once

#include "widgets/AppContext.h"

#include <QDialog>

class QLineEdit;

/// Asks for the project name. OK stores it as Setting's ProjectName; Cancel stores the empty text,
/// which is how the caller learns that no name was given.
class frmPjName : public QDialog
{
    Q_OBJECT

public:
    frmPjName(AppContext &context, QWidget *parent);

private slots:
    void txtPjName_Change(const QString &text);
    void cmdOK_Click();
    void cmdCancel_Click();

private:
    AppContext &m_context;
    QLineEdit *m_text;
    QString m_lastValid;
};
