#include "format/dlgFMT.h"

#include "platform/CardFormatter.h"
#include "platform/CardSlotDetection.h"
#include "setting/InitialControlFile.h"
#include "setting/MsgBox.h"
#include "setting/SharedState.h"
#include "widgets/DialogLayout.h"

#include <QLabel>
#include <QLayout>
#include <QTimer>
#include <QVBoxLayout>

dlgFMT::dlgFMT(AppContext &context, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_formatter(CardFormatter::create(this))
    , m_lblFMT(new QLabel(this))
    , m_lblReason(new QLabel(this))
    , m_cmdOK(namedButton(tr("Exit"), "cmdOK", this))
{
    setObjectName(QStringLiteral("dlgFMT"));
    setWindowTitle(tr("Format"));
    setWindowModality(Qt::ApplicationModal);
    m_lblFMT->setObjectName(QStringLiteral("lblFMT"));
    m_lblFMT->setText(tr(" Format FAT16 file system") + QLatin1Char(' ') + context.state.CardSlot);
    m_lblFMT->setMinimumWidth(360);
    m_lblReason->setObjectName(QStringLiteral("lblReason"));
    m_lblReason->setWordWrap(true);
    m_lblReason->hide();
    m_cmdOK->setEnabled(false);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_lblFMT);
    layout->addWidget(m_lblReason);
    layout->addLayout(buttonRow({m_cmdOK}));
    connect(m_cmdOK, &QPushButton::clicked, this, &dlgFMT::cmdOK_Click);
    connect(m_formatter, &CardFormatter::finished, this, &dlgFMT::formatEnded);
}

QString dlgFMT::progressText() const
{
    return m_lblFMT->text();
}

void dlgFMT::showEvent(QShowEvent *event)
{
    QDialog::showEvent(event);
    // Drawn first, then started, as the format has always let its dialog appear before it runs.
    if (!m_activated)
        QTimer::singleShot(0, this, &dlgFMT::Form_Activate);
}

bool dlgFMT::Form_Activate()
{
    if (m_activated)
        return true;
    m_activated = true;
    const SharedState &state = m_context.state;
    for (const DriveInfo &drive : m_context.drives.drives()) {
        if (drive.path != state.CardSlot)
            continue;
        QString error;
        m_running = true;
        if (!m_formatter->start(drive, error))
            formatEnded(false, error);
        return true;
    }
    return false; // the drive is gone: the text stays and "Exit" stays disabled
}

void dlgFMT::formatEnded(bool ok, const QString &error)
{
    m_running = false;
    SharedState &state = m_context.state;
    if (!m_formatter->mountPoint().isEmpty())
        state.CardSlot = m_formatter->mountPoint(); // the card may come back under its new label
    if (!ok) {
        // The card edit window reports the failure when the dialog closes; the reason stays here.
        m_formatFailed = true;
        m_lblFMT->setText(tr(" DQ-480 format error"));
        m_lblReason->setText(error);
        m_lblReason->show();
        // A wrapped reason needs more lines than the dialog was laid out for; it grows to show all.
        layout()->activate();
        if (const int needed = layout()->totalHeightForWidth(width()); needed > height())
            resize(width(), needed);
        m_cmdOK->setEnabled(true);
        return;
    }
    m_lblFMT->setText(tr(" FAT16 format complete"));
    m_lblFMT->setText(tr(" DQ-480 file setting"));
    CardSlotDetection detection(state, m_context.drives);
    CardWriteHooks hooks;
    hooks.slotTest = [&] {
        return detection.CardCheck(state.CardSlot);
    };
    const bool written = WriteInitialControlFile(state, m_context.msgBox, hooks);
    m_lblFMT->setText(written ? tr(" DQ-480 format complete") : tr(" DQ-480 format error"));
    m_cmdOK->setEnabled(true);
}

void dlgFMT::cmdOK_Click()
{
    accept();
}

void dlgFMT::reject()
{
    // Not while the format runs: the card would be left half formatted.
    if (!m_running)
        QDialog::reject();
}
