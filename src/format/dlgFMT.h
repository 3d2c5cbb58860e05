#pragma once

#include "widgets/AppContext.h"

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
    /// True when the format itself failed: it could not start, the tool failed, or the card did
    /// not come out FAT16. A control file that cannot be written afterwards is not a format failure.
    bool formatFailed() const { return m_formatFailed; }
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
    QLabel *m_lblReason; // why the format failed, under the progress text
    QPushButton *m_cmdOK;
    bool m_activated = false;
    bool m_running = false;
    bool m_formatFailed = false;
};
