#pragma once

#include "AppContext.h"

#include <QDialog>

class CardFormatter;
class QLabel;
class QPushButton;

/// Shows the format of the card slot's card, waits for it, then writes the initial control file.
/// "Exit" stays disabled until all of it has ended.
class dlgFMT : public QDialog
{
    Q_OBJECT

public:
    dlgFMT(AppContext &context, QWidget *parent);

    /// Starts the format (the dialog's activation); false when the card slot's drive is gone.
    bool Form_Activate();
    /// True after the format and the control file both succeeded.
    bool succeeded() const { return m_succeeded; }
    QString progressText() const;

public slots:
    void cmdOK_Click();

protected:
    void showEvent(QShowEvent *event) override;
    void reject() override;

private:
    void formatEnded(bool ok, const QString &error);

    AppContext &m_context;
    CardFormatter *m_formatter;
    QLabel *m_lblFMT;
    QPushButton *m_cmdOK;
    bool m_activated = false;
    bool m_running = false;
    bool m_succeeded = false;
};
