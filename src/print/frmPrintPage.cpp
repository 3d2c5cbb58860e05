#include "print/frmPrintPage.h"

#include "setting/MsgBox.h"
#include "setting/OperatorMessages.h"
#include "setting/SharedState.h"
#include "setting/TextChecks.h"
#include "widgets/DialogLayout.h"
#include "widgets/FileDialogs.h"
#include "widgets/NumberBox.h"

#include <QBuffer>
#include <QComboBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRadioButton>
#include <QVBoxLayout>

namespace {

constexpr int PdfResolution = 300;

} // namespace

frmPrintPage::frmPrintPage(AppContext &context, PrintKind kind, int program, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_kind(kind)
    , m_program(program)
    , m_printers(new QComboBox(this))
    , m_allPages(new QRadioButton(tr("All pages"), this))
    , m_range(new QRadioButton(tr("Pages"), this))
    , m_from(namedLineEdit("txtFromPage", this))
    , m_to(namedLineEdit("txtToPage", this))
{
    setObjectName(QStringLiteral("frmPrintPage"));
    setWindowTitle(tr("Print setting"));
    m_printers->setObjectName(QStringLiteral("cmbPrinter"));
    m_printers->addItems(QPrinterInfo::availablePrinterNames());
    m_printers->addItem(pdfChoice());
    const QString preferred = QPrinterInfo::defaultPrinterName();
    m_printers->setCurrentIndex(preferred.isEmpty() ? m_printers->count() - 1
                                                    : m_printers->findText(preferred));
    m_allPages->setObjectName(QStringLiteral("optAllPages"));
    m_range->setObjectName(QStringLiteral("optPageRange"));
    m_allPages->setChecked(true);
    m_from->setAccessibleName(tr("From page"));
    m_to->setAccessibleName(tr("To page"));
    m_from->setMaximumWidth(60);
    m_to->setMaximumWidth(60);

    auto *printerLabel = new QLabel(tr("&Printer:"), this);
    printerLabel->setBuddy(m_printers);
    auto *pages = new QGroupBox(tr("Print range"), this);
    auto *rangeRow = new QHBoxLayout;
    rangeRow->addWidget(m_range);
    rangeRow->addWidget(m_from);
    rangeRow->addWidget(new QLabel(tr("to"), pages));
    rangeRow->addWidget(m_to);
    rangeRow->addStretch();
    auto *pagesLayout = new QVBoxLayout(pages);
    pagesLayout->addWidget(m_allPages);
    pagesLayout->addLayout(rangeRow);
    connect(m_from, &QLineEdit::textEdited, m_range, [this] { m_range->setChecked(true); });
    connect(m_to, &QLineEdit::textEdited, m_range, [this] { m_range->setChecked(true); });

    auto *cmdPreview = namedButton(tr("Preview"), "cmdPreview", this);
    auto *cmdPrint = namedButton(tr("Print"), "cmdPrint", this);
    auto *cmdCancel = namedButton(tr("Cancel"), "cmdCancel", this);
    connect(cmdPreview, &QPushButton::clicked, this, &frmPrintPage::cmdPreview_Click);
    connect(cmdPrint, &QPushButton::clicked, this, [this] {
        if (cmdPrint_Click())
            accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *layout = new QVBoxLayout(this);
    auto *printerRow = new QHBoxLayout;
    printerRow->addWidget(printerLabel);
    printerRow->addWidget(m_printers, 1);
    layout->addLayout(printerRow);
    layout->addWidget(pages);
    layout->addLayout(buttonRow({cmdPreview, cmdPrint, cmdCancel}));
    setMinimumWidth(380);
}

bool frmPrintPage::pageRange(int &from, int &to)
{
    from = to = 0;
    if (!m_range->isChecked())
        return true;
    const QString fromText = m_from->text();
    const QString toText = m_to->text().isEmpty() ? fromText : m_to->text();
    if (fromText.isEmpty() || !IsDecimalText(fromText) || !IsDecimalText(toText) || fromText.size() > 6
        || toText.size() > 6 || fromText.toInt() < 1 || toText.toInt() < fromText.toInt()) {
        m_context.msgBox.show(incorrectValueMessage());
        return false;
    }
    from = fromText.toInt();
    to = toText.toInt();
    return true;
}

bool frmPrintPage::rangeWithinPrintOut(QPagedPaintDevice &device, const QList<PrintRow> &rows, int to)
{
    // Only now is the number of pages known: it depends on the paper and the printer.
    if (to <= printOutPageCount(device, rows))
        return true;
    m_context.msgBox.show(incorrectValueMessage());
    return false;
}

bool frmPrintPage::cmdPrint_Click()
{
    int from = 0;
    int to = 0;
    if (!pageRange(from, to))
        return false;
    const QList<PrintRow> rows = buildPrintOut(m_context.state, m_kind, m_program);
    const QString header = printHeader(m_context.state);
    if (m_printers->currentText() == pdfChoice()) {
        // Laid out on a PDF of the same resolution before the operator names the file.
        QBuffer scratch;
        QPdfWriter sizing(&scratch);
        sizing.setResolution(PdfResolution);
        if (!rangeWithinPrintOut(sizing, rows, to))
            return false;
        const QString path = m_context.fileDialogs.saveFileName(
            this, tr("Save as PDF"), QStringLiteral("PDF (*.pdf)"), QStringLiteral("pdf"));
        if (path.isEmpty())
            return false;
        QPdfWriter writer(path);
        writer.setResolution(PdfResolution);
        if (renderPrintOut(writer, rows, header, from, to) <= 0) {
            m_context.msgBox.show(tr("Cannot write %1").arg(path), MsgBox::Buttons::Ok,
                                  MsgBox::Icon::Critical);
            return false;
        }
        return true;
    }
    QPrinter printer(QPrinterInfo::printerInfo(m_printers->currentText()), QPrinter::HighResolution);
    if (!rangeWithinPrintOut(printer, rows, to))
        return false;
    if (renderPrintOut(printer, rows, header, from, to) <= 0) {
        m_context.msgBox.show(tr("The printer %1 could not print.").arg(m_printers->currentText()),
                              MsgBox::Buttons::Ok, MsgBox::Icon::Critical);
        return false;
    }
    return true;
}

void frmPrintPage::cmdPreview_Click()
{
    int from = 0;
    int to = 0;
    if (!pageRange(from, to))
        return;
    QPrinter printer(QPrinter::HighResolution);
    const QList<PrintRow> rows = buildPrintOut(m_context.state, m_kind, m_program);
    if (!rangeWithinPrintOut(printer, rows, to))
        return;
    QPrintPreviewDialog preview(&printer, this);
    preview.setWindowTitle(tr("Print preview"));
    const QString header = printHeader(m_context.state);
    connect(&preview, &QPrintPreviewDialog::paintRequested, this,
            [&](QPrinter *target) { renderPrintOut(*target, rows, header, from, to); });
    preview.exec();
}
