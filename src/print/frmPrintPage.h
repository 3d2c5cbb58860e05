#pragma once

#include "print/PrintOut.h"
#include "widgets/AppContext.h"

#include <QDialog>

class QComboBox;
class QLineEdit;
class QPagedPaintDevice;
class QRadioButton;

/// The print setting dialog: which printer (or a PDF file), all pages or a range, a preview.
class frmPrintPage : public QDialog
{
    Q_OBJECT

public:
    frmPrintPage(AppContext &context, PrintKind kind, int program, QWidget *parent);

    static QString pdfChoice() { return tr("Save as PDF"); }

public slots:
    /// Prints (or saves the PDF); false when an entry was refused or nothing was printed.
    bool cmdPrint_Click();
    void cmdPreview_Click();

private:
    /// The page range chosen: {0, 0} for all pages; false after "Incorrect value has been entered.".
    bool pageRange(int &from, int &to);
    /// False after "Incorrect value has been entered." when page `to` is beyond the print-out's last.
    bool rangeWithinPrintOut(QPagedPaintDevice &device, const QList<PrintRow> &rows, int to);

    AppContext &m_context;
    PrintKind m_kind;
    int m_program;
    QComboBox *m_printers;
    QRadioButton *m_allPages;
    QRadioButton *m_range;
    QLineEdit *m_from;
    QLineEdit *m_to;
};
