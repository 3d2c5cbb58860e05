#pragma once

#include "widgets/AppContext.h"

#include <QDialog>

class QLabel;
class QLineEdit;

/// Copies sentence files, and the card control file, from the card to a folder on the PC: all of
/// them into a sub-folder, or one by name. Files already on the PC are never overwritten; nothing
/// on the card changes.
class dlgCaPc : public QDialog
{
    Q_OBJECT

public:
    dlgCaPc(AppContext &context, QWidget *parent);

    /// Where copies go, always with a trailing separator.
    QString destinationFolder() const { return m_destination; }

public slots:
    void cmdCaPcAll_Click();
    void cmdCaPcSel_Click();
    void cmdCaPcDir_Click();
    void cmdCaPcClose_Click();
    bool txtCaPcAllInp_LostFocus();
    void txtCaPcSelInp_Change();

private:
    void Form_Load();
    void showDestination();
    QString cardSentenceFolder() const;
    /// Copies one file, never over an existing one; says which file and why when it fails.
    bool copyOne(const QString &source, const QString &destination);

    AppContext &m_context;
    QString m_destination;
    QLabel *m_lblCaPcPath = nullptr;
    QLineEdit *m_txtCaPcAllInp = nullptr;
    QLineEdit *m_txtCaPcSelInp = nullptr;
};
