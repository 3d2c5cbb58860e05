#include "program/frmStep.h"
#include "setting/OperatorMessages.h"
#include "widgets/ShownFileName.h"

#include "program/ProgramEditsQuestion.h"
#include "program/StepText.h"
#include "setting/MsgBox.h"
#include "setting/NumberText.h"
#include "setting/SharedState.h"
#include "setting/StoredStep.h"
#include "widgets/BoxColumns.h"
#include "widgets/DialogLayout.h"
#include "widgets/EntryCheck.h"
#include "widgets/WindowFrame.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QScrollBar>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace {

constexpr int Columns = frmStep::Steps / frmStep::StepsPerColumn;

} // namespace

frmStep::frmStep(AppContext &context, const QString &methodName, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_methodName(methodName)
{
    setObjectName(QStringLiteral("frmStep"));
    setAttribute(Qt::WA_DeleteOnClose);

    auto *cmdStpIns = namedButton(tr("Insert"), "cmdStpIns", this);
    auto *cmdStpDelte = namedButton(tr("Delete"), "cmdStpDelte", this);
    auto *cmdStpMov = namedButton(tr("Close gaps"), "cmdStpMov", this);
    auto *cmdStepOk = namedButton(tr("OK"), "cmdStepOk", this);
    auto *cmdStpClose = namedButton(tr("Close"), "cmdStpClose", this);
    m_cmdStpSave = namedButton(tr("Apply"), "cmdStpSave", this);
    m_hscStep = new QScrollBar(Qt::Horizontal, this);
    m_hscStep->setObjectName(QStringLiteral("hscStep"));
    m_hscStep->setAccessibleName(tr("Step columns"));
    m_hscStep->setRange(0, Columns - VisibleColumns);
    m_hscStep->setPageStep(VisibleColumns);

    auto *edits = new QHBoxLayout;
    edits->addWidget(cmdStpIns);
    edits->addWidget(cmdStpDelte);
    edits->addWidget(cmdStpMov);
    edits->addStretch();
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(buildStepFrame());
    layout->addWidget(m_hscStep);
    layout->addLayout(edits);
    layout->addLayout(buttonRow({cmdStepOk, cmdStpClose, m_cmdStpSave}));

    connect(m_hscStep, &QScrollBar::valueChanged, this, &frmStep::hscStep_Change);
    m_hscStep->installEventFilter(this);
    connect(cmdStpIns, &QPushButton::clicked, this, &frmStep::cmdStpIns_Click);
    connect(cmdStpDelte, &QPushButton::clicked, this, &frmStep::cmdStpDelte_Click);
    connect(cmdStpMov, &QPushButton::clicked, this, &frmStep::cmdStpMov_Click);
    connect(m_cmdStpSave, &QPushButton::clicked, this, &frmStep::cmdStpSave_Click);
    connect(cmdStepOk, &QPushButton::clicked, this, &frmStep::cmdStepOk_Click);
    connect(cmdStpClose, &QPushButton::clicked, this, &frmStep::cmdStpClose_Click);
    // Escape is the Close button, as in a dialog.
    auto *escape = new QShortcut(QKeySequence::Cancel, this, cmdStpClose, &QPushButton::click);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    QList<QWidget *> tabOrder;
    for (QLineEdit *box : m_boxes)
        tabOrder << box;
    tabOrder << cmdStpIns << cmdStpDelte << cmdStpMov << cmdStepOk << cmdStpClose << m_cmdStpSave;
    chainTabOrder(tabOrder);
    Form_Load();
    // The operator starts in the steps, not on a button.
    m_boxes[0]->setFocus();
}

QWidget *frmStep::buildStepFrame()
{
    // All 16 columns of eight; four show, and the scroll bar slides the rest into view.
    m_columns = new BoxColumns(Steps, StepsPerColumn, VisibleColumns, QStringLiteral("M000.00"), 8,
                               {"stepView", "fraStep", "lblStpIdx", "txtStpIdx"}, this);
    for (int i = 0; i < Steps; ++i) {
        QLineEdit *edit = m_columns->box(i);
        edit->installEventFilter(this);
        auto *entry = new EntryCheck(edit, [this, i] { return txtStpIdx_LostFocus(i); });
        connect(edit, &QLineEdit::textEdited, this, &frmStep::setModified);
        // Enter checks the step before it moves on, so that no message box opens inside the move.
        connect(edit, &QLineEdit::returnPressed, this, [this, i, entry] {
            entry->checkPending();
            focusBox(qMin(i + 1, Steps - 1));
        });
        m_boxes[i] = edit;
    }
    return m_columns;
}

ProgramSteps &frmStep::steps()
{
    return m_context.state.SettingBuffer.ProgramData[m_p];
}

int frmStep::sentenceLimit() const
{
    return m_context.state.SettingBuffer.sentenceTable().entries();
}

void frmStep::Form_Load()
{
    m_p = m_context.state.StepProgramNumber - 1;
    refreshCaption();
    showWorkingCopy();
    // A program copied over this one replaces the steps shown.
    connect(&m_context.state, &SharedState::programReplaced, this, [this](int number) {
        if (number == m_p + 1)
            showWorkingCopy();
    });
    // Edits discarded elsewhere (another program window's OK or Cancel) must not go on showing
    // here, where Apply would then commit steps other than those shown; the window's own discard
    // happens as it closes.
    connect(&m_context.state, &SharedState::workingCopyReverted, this, [this] {
        if (!m_closeOnce.agreed())
            showWorkingCopy();
    });
}

void frmStep::showWorkingCopy()
{
    // Steps of a form the window does not know are dropped from the working copy.
    for (QString &stored : steps()) {
        if (decodeStep(stored).shown.isEmpty())
            stored.clear();
    }
    showStoredSteps();
    m_cmdStpSave->setEnabled(false);
}

void frmStep::showMethod(const QString &methodName)
{
    m_methodName = methodName;
    refreshCaption();
}

void frmStep::refreshCaption()
{
    setWindowTitle(m_methodName + QStringLiteral(" - ") + tr("Step Input : ") + QLatin1Char(' ')
                   + shownFileName(m_context.state.ProjectFileName) + QStringLiteral(" - P")
                   + zeroPadded(m_p + 1, 3));
}

void frmStep::showStep(int index, const QString &text)
{
    m_boxes[index]->setText(text);
}

void frmStep::showStoredSteps()
{
    for (int i = 0; i < Steps; ++i)
        showStep(i, decodeStep(steps()[i]).shown);
}

void frmStep::setModified()
{
    m_cmdStpSave->setEnabled(true);
}

bool frmStep::txtStpIdx_LostFocus(int index)
{
    const QString text = m_boxes[index]->text();
    const StepText::Entry entry = StepText::check(text, sentenceLimit());
    if (!entry.accepted) {
        showStep(index, decodeStep(steps()[index]).shown);
        m_context.msgBox.show(incorrectValueMessage());
        return false;
    }
    steps()[index] = entry.stored;
    showStep(index, entry.shown);
    setModified();
    return true;
}

void frmStep::focusBox(int index)
{
    bringColumnIntoView(index);
    m_boxes[index]->setFocus();
    m_current = index;
}

void frmStep::bringColumnIntoView(int index)
{
    const int first = m_columns->firstColumnShowing(index, m_hscStep->value());
    const QSignalBlocker block(m_hscStep);
    m_hscStep->setValue(first);
    m_columns->showColumn(first);
}

void frmStep::showPlayingStep(int step)
{
    if (step == m_playingStep)
        return;
    if (m_playingStep >= 0) {
        m_boxes[m_playingStep]->setPalette(QPalette());
        m_boxes[m_playingStep]->setAccessibleDescription(QString());
    }
    m_playingStep = step >= 0 && step < Steps ? step : -1;
    if (m_playingStep < 0)
        return;
    QLineEdit *box = m_boxes[m_playingStep];
    QPalette marked = box->palette();
    marked.setColor(QPalette::Base, palette().color(QPalette::Highlight));
    marked.setColor(QPalette::Text, palette().color(QPalette::HighlightedText));
    box->setPalette(marked);
    box->setAccessibleDescription(tr("Playing"));
    // The steps follow the sound, except while the operator is typing in them.
    if (!isAncestorOf(QApplication::focusWidget()))
        bringColumnIntoView(m_playingStep);
}

void frmStep::hscStep_Change(int value)
{
    m_columns->showColumn(value);
    m_boxes[value * StepsPerColumn]->setFocus();
    m_current = value * StepsPerColumn;
}

bool frmStep::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        if (watched == m_hscStep) {
            hscStep_Change(m_hscStep->value());
        } else if (auto *edit = qobject_cast<QLineEdit *>(watched)) {
            const auto found = std::find(m_boxes.begin(), m_boxes.end(), edit);
            if (found != m_boxes.end()) {
                m_current = static_cast<int>(found - m_boxes.begin());
                bringColumnIntoView(m_current);
            }
        }
    }
    return QWidget::eventFilter(watched, event);
}

void frmStep::cmdStpIns_Click()
{
    if (!checkPendingEntries(this))
        return;
    auto &list = steps();
    if (!list[Steps - 1].isEmpty()) {
        m_context.msgBox.show(tr("128 step is programmed. Can not insert"));
        return;
    }
    std::move_backward(list.begin() + m_current, list.end() - 1, list.end());
    list[m_current].clear();
    showStoredSteps();
    setModified();
}

void frmStep::cmdStpDelte_Click()
{
    if (!checkPendingEntries(this))
        return;
    auto &list = steps();
    std::move(list.begin() + m_current + 1, list.end(), list.begin() + m_current);
    list[Steps - 1].clear();
    showStoredSteps();
    setModified();
    applyDefaultStepRule();
}

void frmStep::applyDefaultStepRule()
{
    auto &list = steps();
    if (std::any_of(list.begin(), list.end(), [](const QString &s) { return !s.isEmpty(); }))
        return;
    list[0] = StepText::defaultStep();
    showStep(0, decodeStep(list[0]).shown);
    m_context.msgBox.show(tr("All steps deleted. Will set default steps."));
}

void frmStep::cmdStpMov_Click()
{
    if (!checkPendingEntries(this))
        return;
    // The boxes keep their texts as shown ("M005" stays "M005") while the steps close up.
    auto &list = steps();
    int to = 0;
    for (int from = 0; from < Steps; ++from) {
        if (list[from].isEmpty())
            continue;
        if (from != to) {
            list[to] = std::move(list[from]);
            list[from].clear();
            showStep(to, m_boxes[from]->text());
            showStep(from, QString());
        }
        ++to;
    }
    setModified();
}

void frmStep::cmdStpSave_Click()
{
    if (!checkPendingEntries(this))
        return;
    m_context.state.CopyBufferToSetting(SettingSection::Steps);
    m_cmdStpSave->setEnabled(false);
}

void frmStep::cmdStepOk_Click()
{
    if (!checkPendingEntries(this))
        return;
    m_context.state.CopyBufferToSetting(SettingSection::Steps);
    closeFrame();
}

void frmStep::cmdStpClose_Click()
{
    // A step typed last counts as an edit, so that closing asks before it is dropped.
    checkPendingEntries(this);
    closeFrame();
}

void frmStep::closeFrame()
{
    closeWindowFrame(this);
}

bool frmStep::Form_Unload()
{
    // Discarding reverts the program's settings too; its window redraws from the revert.
    return mayDiscardProgramEdits(m_context.state, m_context.msgBox);
}

void frmStep::closeEvent(QCloseEvent *event)
{
    if (m_closeOnce.mayClose([this] { return Form_Unload(); })) {
        event->accept();
    } else {
        event->ignore();
    }
}
