#include "cardedit/frmEdit.h"

#include "cardedit/ProgramNumberField.h"
#include "format/dlgFMT.h"
#include "platform/CardSlotCriteria.h"
#include "platform/CardSlotDetection.h"
#include "program/ProgramNumberText.h"
#include "program/frmProg.h"
#include "sentence/dlgCaPc.h"
#include "sentence/dlgPcCa.h"
#include "setting/CardWrite.h"
#include "setting/MsgBox.h"
#include "setting/OperatorMessages.h"
#include "setting/PathText.h"
#include "setting/ProjectFile.h"
#include "setting/SentenceTable.h"
#include "setting/SharedState.h"
#include "setting/TextChecks.h"
#include "widgets/DialogLayout.h"
#include "widgets/NumberBox.h"
#include "widgets/ProjectCommands.h"
#include "widgets/QtMsgBox.h"
#include "widgets/ShownFileName.h"
#include "widgets/WindowFrame.h"
#include "widgets/dlgErrLog.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QRadioButton>
#include <QScrollBar>
#include <QShortcut>
#include <QTabWidget>
#include <QTimer>
#include <QVBoxLayout>

namespace {

constexpr int CardCheckMilliseconds = 1000;

QString explanationForDisplay(const QString &stored)
{
    return QString(stored).replace(QLatin1String("\r\n"), QLatin1String("\n"));
}

QString explanationForStorage(const QString &shown)
{
    return QString(shown).replace(QLatin1Char('\n'), QLatin1String("\r\n"));
}

} // namespace

frmEdit::frmEdit(AppContext &context, ProjectCommands &commands, QMdiArea *mdiArea, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_commands(commands)
    , m_mdiArea(mdiArea)
    , m_programWindows(new ProgramWindowTable(this))
    , m_timCardC(new QTimer(this))
{
    setObjectName(QStringLiteral("frmEdit"));
    m_mainTab = new QTabWidget(this);
    m_mainTab->setObjectName(QStringLiteral("MainTab"));
    m_mainTab->addTab(buildProgramTab(), tr("Program"));
    m_mainTab->addTab(buildCardEditTab(), tr("Card Edit"));
    m_mainTab->addTab(buildDataInformationTab(), tr("Data information"));
    // Ctrl+Tab belongs to the document windows; the pages turn with Ctrl+PageDown and Ctrl+PageUp.
    for (const auto &[keys, step] :
         {std::pair {Qt::CTRL | Qt::Key_PageDown, 1}, {Qt::CTRL | Qt::Key_PageUp, -1}}) {
        auto *turn = new QShortcut(QKeySequence(keys), this);
        turn->setContext(Qt::WidgetWithChildrenShortcut);
        connect(turn, &QShortcut::activated, this, [this, step = step] {
            const int pages = m_mainTab->count();
            m_mainTab->setCurrentIndex((m_mainTab->currentIndex() + step + pages) % pages);
        });
    }

    m_cmdCaWrite = namedButton(tr("Card write"), "cmdCaWrite", this);
    auto *cmdSave = namedButton(tr("Save"), "cmdSave", this);
    auto *cmdClose = namedButton(tr("Exit"), "cmdClose", this);
    auto *cmdEditApp = namedButton(tr("Apply"), "cmdEditApp", this);
    connect(m_cmdCaWrite, &QPushButton::clicked, this, &frmEdit::cmdCaWrite_Click);
    connect(cmdSave, &QPushButton::clicked, this, &frmEdit::cmdSave_Click);
    connect(cmdClose, &QPushButton::clicked, this, &frmEdit::cmdClose_Click);
    connect(cmdEditApp, &QPushButton::clicked, this, &frmEdit::cmdEditApp_Click);

    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_mainTab);
    layout->addLayout(buttonRow({m_cmdCaWrite, cmdSave, cmdClose, cmdEditApp}));

    m_timCardC->setObjectName(QStringLiteral("timCardC"));
    m_timCardC->setInterval(CardCheckMilliseconds);
    connect(m_timCardC, &QTimer::timeout, this, &frmEdit::timCardC_Timer);
    // A card event shows at once, not only at the timer's next tick.
    connect(&context.state, &SharedState::cardSlotChanged, this, [this] {
        if (m_context.state.EditWindowLoaded)
            timCardC_Timer();
    });
    connect(&m_commands, &ProjectCommands::fileDisplaysChanged, this, &frmEdit::refreshFileLabels);
}

frmEdit::~frmEdit() = default;

QWidget *frmEdit::buildProgramTab()
{
    auto *tab = new QWidget;
    auto *fraEdit = new QGroupBox(tr("Program edit"), tab);
    fraEdit->setObjectName(QStringLiteral("fraTPrgEdit"));
    m_txtTPrgNo = namedLineEdit("txtTPrgNo", fraEdit);
    m_txtTPrgNo->setAccessibleName(tr("Program No"));
    auto *scrTPrgNo = numberBar("scrTPrgNo", tr("Program No: up or down"), fraEdit);
    auto *lblPrgNo = new QLabel(tr("Program No:"), fraEdit);
    lblPrgNo->setBuddy(m_txtTPrgNo);
    auto *cmdTPrgNo = namedButton(tr("Open"), "cmdTPrgNo", fraEdit);
    auto *editRow = new QHBoxLayout(fraEdit);
    editRow->addWidget(lblPrgNo);
    editRow->addWidget(numberBox(m_txtTPrgNo, scrTPrgNo, fraEdit));
    editRow->addSpacing(12);
    editRow->addWidget(cmdTPrgNo);
    editRow->addStretch();

    auto *fraCopy = new QGroupBox(tr("Program copying"), tab);
    fraCopy->setObjectName(QStringLiteral("fraTPrgCpy"));
    m_txtTPrgCpy = namedLineEdit("txtTPrgCpy", fraCopy);
    m_txtTPrgCpy->setAccessibleName(tr("Copy from program"));
    m_txtTprgCpy2 = namedLineEdit("txtTprgCpy2", fraCopy);
    m_txtTprgCpy2->setAccessibleName(tr("Copy to program"));
    auto *scrTprgCpy = numberBar("scrTprgCpy", tr("Copy from program: up or down"), fraCopy);
    auto *scrTPrgCpy2 = numberBar("scrTPrgCpy2", tr("Copy to program: up or down"), fraCopy);
    auto *arrow = new QLabel(QStringLiteral("   ---->"), fraCopy);
    auto *cmdTPrgCpy = namedButton(tr("Execute"), "cmdTPrgCpy", fraCopy);
    auto *copyRow = new QHBoxLayout(fraCopy);
    copyRow->addWidget(numberBox(m_txtTPrgCpy, scrTprgCpy, fraCopy));
    copyRow->addWidget(arrow);
    copyRow->addWidget(numberBox(m_txtTprgCpy2, scrTPrgCpy2, fraCopy));
    copyRow->addSpacing(12);
    copyRow->addWidget(cmdTPrgCpy);
    copyRow->addStretch();

    m_prgNo = new ProgramNumberField(m_txtTPrgNo, scrTPrgNo, m_context.msgBox, this);
    m_prgCpy = new ProgramNumberField(m_txtTPrgCpy, scrTprgCpy, m_context.msgBox, this);
    m_prgCpy2 = new ProgramNumberField(m_txtTprgCpy2, scrTPrgCpy2, m_context.msgBox, this);
    connect(cmdTPrgNo, &QPushButton::clicked, this, &frmEdit::cmdTPrgNo_Click);
    connect(cmdTPrgCpy, &QPushButton::clicked, this, &frmEdit::cmdTPrgCpy_Click);
    // Enter in the program number opens that program; in the copy numbers it checks them.
    connect(m_txtTPrgNo, &QLineEdit::returnPressed, this, &frmEdit::cmdTPrgNo_Click);
    connect(m_txtTPrgCpy, &QLineEdit::returnPressed, this, &frmEdit::txtTPrgCpy_LostFocus);
    connect(m_txtTprgCpy2, &QLineEdit::returnPressed, this, &frmEdit::txtTprgCpy2_LostFocus);

    auto *layout = new QVBoxLayout(tab);
    layout->addWidget(fraEdit);
    layout->addWidget(fraCopy);
    layout->addStretch();
    return tab;
}

QWidget *frmEdit::buildCardEditTab()
{
    auto *tab = new QWidget;
    auto *lblSlotCaption = new QLabel(tr("Slot"), tab);
    m_lblSlot = new QLabel(tab);
    m_lblSlot->setObjectName(QStringLiteral("lblSlot"));
    m_lblSlot->setAccessibleName(tr("Slot"));
    lblSlotCaption->setBuddy(m_lblSlot);

    auto *fraFormat = new QGroupBox(tr("Card format"), tab);
    fraFormat->setObjectName(QStringLiteral("fraTCaFormat"));
    m_opt512 = new QRadioButton(tr("512 sentence"), fraFormat);
    m_opt512->setObjectName(QStringLiteral("optSize_0"));
    m_opt128 = new QRadioButton(tr("128 sentence"), fraFormat);
    m_opt128->setObjectName(QStringLiteral("optSize_1"));
    m_cmdTCaFormat = namedButton(tr("Start"), "cmdTCaFormat", fraFormat);
    m_cmdTCaFormat->setAccessibleName(tr("Start card format"));
    auto *formatRow = new QHBoxLayout(fraFormat);
    formatRow->addWidget(m_opt512);
    formatRow->addWidget(m_opt128);
    formatRow->addStretch();
    formatRow->addWidget(m_cmdTCaFormat);
    connect(m_opt512, &QRadioButton::clicked, this, &frmEdit::optSize_Click);
    connect(m_opt128, &QRadioButton::clicked, this, &frmEdit::optSize_Click);
    connect(m_cmdTCaFormat, &QPushButton::clicked, this, &frmEdit::cmdTCaFormat_Click);

    auto *fraCopy = new QGroupBox(tr("Sentence data copy"), tab);
    fraCopy->setObjectName(QStringLiteral("fraTSentence"));
    m_cmdTPcCa = namedButton(tr("Start"), "cmdTPcCa", fraCopy);
    m_cmdTPcCa->setAccessibleName(tr("Start sentence copy PC -> Card"));
    m_cmdTCaPc = namedButton(tr("Start"), "cmdTCaPc", fraCopy);
    m_cmdTCaPc->setAccessibleName(tr("Start sentence copy Card -> PC"));
    auto *copyGrid = new QGridLayout(fraCopy);
    copyGrid->addWidget(new QLabel(tr("PC -> Card"), fraCopy), 0, 0);
    copyGrid->addWidget(m_cmdTPcCa, 0, 1);
    copyGrid->addWidget(new QLabel(tr("Card -> PC"), fraCopy), 1, 0);
    copyGrid->addWidget(m_cmdTCaPc, 1, 1);
    copyGrid->setColumnStretch(2, 1);
    connect(m_cmdTPcCa, &QPushButton::clicked, this, &frmEdit::cmdTPcCa_Click);
    connect(m_cmdTCaPc, &QPushButton::clicked, this, &frmEdit::cmdTCaPc_Click);

    auto *fraName = new QGroupBox(tr("Card name"), tab);
    fraName->setObjectName(QStringLiteral("fraTCaName"));
    m_txtTCaName = namedLineEdit("txtTCaName", fraName);
    auto *lblCardName = new QLabel(tr("Card name:"), fraName);
    lblCardName->setBuddy(m_txtTCaName);
    auto *nameRow = new QHBoxLayout(fraName);
    nameRow->addWidget(lblCardName);
    nameRow->addWidget(m_txtTCaName, 1);
    connect(m_txtTCaName, &QLineEdit::textEdited, this, &frmEdit::txtTCaName_Change);

    m_fraProtect = new QGroupBox(tr("Write protect"), tab);
    m_fraProtect->setObjectName(QStringLiteral("fraTCaProt"));
    auto *lblProtect = new QLabel(tr("Software write protect"), m_fraProtect);
    m_cmdTCaProtOn = namedButton(tr("ON"), "cmdTCaProtOn", m_fraProtect);
    m_cmdTCaProtOff = namedButton(tr("OFF"), "cmdTCaProtOff", m_fraProtect);
    auto *protectRow = new QHBoxLayout(m_fraProtect);
    protectRow->addWidget(lblProtect);
    protectRow->addStretch();
    protectRow->addWidget(m_cmdTCaProtOn);
    protectRow->addWidget(m_cmdTCaProtOff);
    connect(m_cmdTCaProtOn, &QPushButton::clicked, this, &frmEdit::cmdTCaProtOn_Click);
    connect(m_cmdTCaProtOff, &QPushButton::clicked, this, &frmEdit::cmdTCaProtOff_Click);

    auto *slotRow = new QHBoxLayout;
    slotRow->addWidget(lblSlotCaption);
    slotRow->addWidget(m_lblSlot, 1);
    auto *layout = new QVBoxLayout(tab);
    layout->addLayout(slotRow);
    layout->addWidget(fraFormat);
    layout->addWidget(fraCopy);
    layout->addWidget(fraName);
    layout->addWidget(m_fraProtect);
    layout->addStretch();
    return tab;
}

QWidget *frmEdit::buildDataInformationTab()
{
    auto *tab = new QWidget;
    m_lblFileName = new QLabel(tab);
    m_lblFileName->setObjectName(QStringLiteral("lblFileName"));
    m_lblFileLocation = new QLabel(tab);
    m_lblFileLocation->setObjectName(QStringLiteral("lblFileLocation"));
    m_txtName = namedLineEdit("txtName", tab);
    m_txtNo = namedLineEdit("txtNo", tab);
    m_txtExp = new QPlainTextEdit(tab);
    m_txtExp->setObjectName(QStringLiteral("txtExp"));
    m_txtExp->setTabChangesFocus(true);
    auto *form = new QFormLayout(tab);
    form->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    form->addRow(tr("Filename:"), m_lblFileName);
    form->addRow(tr("File location:"), m_lblFileLocation);
    form->addRow(tr("Project name:"), m_txtName);
    form->addRow(tr("Creator:"), m_txtNo);
    form->addRow(tr("Explanation:"), m_txtExp);
    connect(m_txtName, &QLineEdit::textEdited, this, &frmEdit::txtName_Change);
    connect(m_txtNo, &QLineEdit::textEdited, this, &frmEdit::txtNo_Change);
    connect(m_txtExp, &QPlainTextEdit::textChanged, this, &frmEdit::txtExp_Change);
    return tab;
}

void frmEdit::Form_Load()
{
    SharedState &state = m_context.state;
    m_prgNo->setNumber(1);
    m_txtTPrgNo->setText(QStringLiteral("P01"));
    m_prgCpy->setNumber(1);
    m_prgCpy2->setNumber(2);

    qint16 &attribute = state.SettingBuffer.CardAttribute;
    (attribute & SettingData::Attribute512Sentences ? m_opt512 : m_opt128)->setChecked(true);
    m_txtTCaName->setText(state.SettingBuffer.CardName);
    m_validCardName = m_txtTCaName->text();

    // Kept on purpose: the protection cannot be changed in this window, and a protected card keeps
    // only that bit in the working copy. Both are how this window has always behaved.
    m_cmdTCaProtOn->setEnabled(false);
    m_cmdTCaProtOff->setEnabled(false);
    m_fraProtect->setVisible(false);
    if (attribute & SettingData::AttributeWriteProtect)
        attribute = static_cast<qint16>(attribute & SettingData::AttributeWriteProtect);

    refreshFileLabels();
    const SettingData &setting = state.Setting;
    m_txtName->setText(setting.ProjectName);
    m_validName = setting.ProjectName;
    m_txtNo->setText(setting.Creator);
    m_validExplanation = setting.Explanation;
    m_txtExp->setPlainText(explanationForDisplay(setting.Explanation));
    if (!setting.ProjectName.isEmpty())
        QDir().mkpath(joinPath(state.AppPath, setting.ProjectName));

    emit projectMenusVisible(true);
    // A new project's path is its name, "New File", which the operator reads in the window's language.
    emit captionChanged(tr("DQ-480 Setting Software : ")
                        + shownFileName(state.CurrentFilePath.isEmpty() ? QStringLiteral("New File")
                                                                        : state.CurrentFilePath));
    setWindowTitle(shownFileName(state.ProjectFileName));
    setCardButtonsEnabled(state.CardSlotValid);
    timCardC_Timer();
    m_timCardC->start();
    state.EditWindowLoaded = true;
}

bool frmEdit::event(QEvent *event)
{
    if (event->type() == QEvent::WindowActivate)
        Form_GotFocus();
    return QWidget::event(event);
}

void frmEdit::Form_GotFocus()
{
    refreshFileLabels();
}

void frmEdit::refreshFileLabels()
{
    const SharedState &state = m_context.state;
    m_lblFileName->setText(shownFileName(state.ProjectFileName));
    m_lblFileLocation->setText(folderDisplayText(state.ProjectFileName, state.ProjectFolder));
    m_lblFileLocation->setToolTip(state.ProjectFolder);
    setWindowTitle(shownFileName(state.ProjectFileName));
}

void frmEdit::optSize_Click()
{
    SharedState &state = m_context.state;
    const bool to512 = m_opt512->isChecked();
    if (!to512 && sentencesAbove128(state)
        && !m_context.msgBox.confirm(tr("Delete message file 129 - 512"))) {
        m_opt512->setChecked(true);
        return;
    }
    setSentenceTableSize(state, to512);
}

void frmEdit::cmdTCaProtOn_Click()
{
    m_cmdTCaProtOn->setEnabled(false);
    m_cmdTCaProtOff->setEnabled(true);
    SharedState &state = m_context.state;
    state.SettingBuffer.CardAttribute
        = static_cast<qint16>(state.SettingBuffer.CardAttribute | SettingData::AttributeWriteProtect);
    state.Setting.CardAttribute = state.SettingBuffer.CardAttribute;
}

void frmEdit::cmdTCaProtOff_Click()
{
    // Kept on purpose: only the working copy loses the bit (ON sets both); Setting follows on Apply.
    m_cmdTCaProtOn->setEnabled(true);
    m_cmdTCaProtOff->setEnabled(false);
    SharedState &state = m_context.state;
    state.SettingBuffer.CardAttribute
        = static_cast<qint16>(state.SettingBuffer.CardAttribute & ~SettingData::AttributeWriteProtect);
}

void frmEdit::cmdCaWrite_Click()
{
    // No answer could make a locked card take the write, so the question is not asked.
    if (cardIsReadOnly(m_context.state)) {
        m_context.msgBox.show(cardReadOnlyMessage());
        return;
    }
    // The slot is a mount point here, not a drive letter: the question names it whole.
    if (!m_context.msgBox.confirm(tr("Write setting file at drive:") + m_context.state.CardSlot
                                  + QLatin1Char('?')))
        return;
    WriteProjectToCard(true);
}

bool frmEdit::WriteProjectToCard(bool announceCompletion)
{
    SharedState &state = m_context.state;
    CardSlotDetection detection(state, m_context.drives);
    QProgressDialog progress(tr("Card write"), QString(), 0, 1, this);
    progress.setObjectName(QStringLiteral("cardWriteProgress"));
    progress.setWindowTitle(tr("Card write"));
    progress.setWindowModality(Qt::WindowModal);
    // Shown from the start: left to show itself after a delay, it came up while a message box was
    // waiting for an answer, and covered it.
    progress.setMinimumDuration(0);
    progress.show();
    CardWriteHooks hooks;
    hooks.slotTest = [&] {
        return detection.CardCheck(state.CardSlot);
    };
    hooks.showMissingFiles = [this, &state](const QStringList &) {
        // Over the progress window, not under it.
        dlgErrLog errors(state, frontWindow(this));
        errors.exec();
    };
    hooks.progress = [&progress](const QString &name, int done, int count) {
        progress.setMaximum(count);
        progress.setValue(done);
        progress.setLabelText(cardWriteProgressText(name, done, count));
        QCoreApplication::processEvents();
    };
    return WriteCard(state, m_context.msgBox, hooks, announceCompletion);
}

void frmEdit::cmdTCaFormat_Click()
{
    const SharedState &state = m_context.state;
    const QList<DriveInfo> drives = m_context.drives.drives();
    const bool usable = std::any_of(drives.begin(), drives.end(), [&](const DriveInfo &d) {
        return d.path == state.CardSlot && d.ready && CardSlotCriteria::typeIsExamined(d);
    });
    if (!usable)
        return;
    m_timCardC->stop();
    if (m_context.msgBox.confirm(tr("Format start drive: ") + state.CardSlot)) {
        dlgFMT dialog(m_context, this);
        dialog.exec();
        if (dialog.formatFailed())
            m_context.msgBox.show(tr("DQ480 Format error end!"));
    }
    m_timCardC->start();
}

void frmEdit::cmdTPcCa_Click()
{
    dlgPcCa dialog(m_context, this);
    dialog.exec();
}

void frmEdit::cmdTCaPc_Click()
{
    dlgCaPc dialog(m_context, this);
    dialog.exec();
}

void frmEdit::cmdSave_Click()
{
    SharedState &state = m_context.state;
    if (!state.SettingEqualsBuffer(SettingSection::All)
        && !m_context.msgBox.confirm(tr("Save changes to DQ-480 Setting Software ")
                                     + shownFileName(state.CurrentFilePath)))
        return;
    if (m_commands.SaveProject())
        refreshFileLabels();
}

void frmEdit::cmdEditApp_Click()
{
    SharedState &state = m_context.state;
    state.CopyBufferToSetting(SettingSection::All);
    if (!state.Setting.ProjectName.isEmpty())
        QDir().mkpath(joinPath(state.AppPath, state.Setting.ProjectName));
}

void frmEdit::cmdClose_Click()
{
    closeWindowFrame(this);
}

void frmEdit::setCardButtonsEnabled(bool enabled)
{
    m_cmdTCaPc->setEnabled(enabled);
    m_cmdCaWrite->setEnabled(enabled);
    m_cmdTCaFormat->setEnabled(enabled);
    emit cardButtonsEnabled(enabled);
}

void frmEdit::timCardC_Timer()
{
    const SharedState &state = m_context.state;
    setCardButtonsEnabled(state.CardSlotValid);
    m_lblSlot->setText(state.CardSlot.isEmpty() ? tr("Nothing") : state.CardSlot);
}

bool frmEdit::txtTPrgNo_LostFocus()
{
    return m_prgNo->check();
}

bool frmEdit::txtTPrgCpy_LostFocus()
{
    return m_prgCpy->check();
}

bool frmEdit::txtTprgCpy2_LostFocus()
{
    return m_prgCpy2->check();
}

void frmEdit::cmdTPrgNo_Click()
{
    // A number typed but not yet checked (the focus never left its box) is checked first.
    if (!txtTPrgNo_LostFocus())
        return;
    ProgramWindowTable &table = *m_programWindows;
    const int number = m_prgNo->number();
    switch (table.refusalFor(number)) {
    case ProgramWindowTable::Refusal::EightOpen:
        m_context.msgBox.show(tr("Program setting open 8 pattern"));
        return;
    case ProgramWindowTable::Refusal::AlreadyOpen:
        m_context.msgBox.show(tr("This Program number is already open"));
        if (auto *frame
            = qobject_cast<QMdiSubWindow *>(table.ProgramWindows[table.slotShowing(number)]->parentWidget()))
            m_mdiArea->setActiveSubWindow(frame);
        return;
    case ProgramWindowTable::Refusal::None:
        break;
    }
    const int slot = table.firstFreeSlot();
    auto *window = new frmProg(m_context, table, slot, number, m_mdiArea);
    table.occupy(slot, window, number);
    QMdiSubWindow *frame = m_mdiArea->addSubWindow(window);
    frame->setAttribute(Qt::WA_DeleteOnClose);
    // Program windows cascade from the top left, each slot a little further in.
    constexpr int CascadeStep = 28;
    frame->move(CascadeStep * slot, CascadeStep * slot);
    window->show();
}

void frmEdit::cmdTPrgCpy_Click()
{
    if (!txtTPrgCpy_LostFocus() || !txtTprgCpy2_LostFocus())
        return;
    if (!m_context.msgBox.confirm(tr("Program setting copy ") + m_prgCpy->text() + QStringLiteral("->")
                                  + m_prgCpy2->text()))
        return;
    const std::optional<int> from = ProgramNumberText::numberAfterPrefix(m_prgCpy->text());
    const std::optional<int> to = ProgramNumberText::numberAfterPrefix(m_prgCpy2->text());
    if (!from || !to)
        return;
    copyProgramInBothCopies(m_context.state, *from, *to);
}

void frmEdit::takeFileNameText(QLineEdit *edit, const QString &text, QString &lastValid, QString &target)
{
    if (!IsValidNameInCodePage(text, m_context.state.Encoding)) {
        m_context.msgBox.show(incorrectValueMessage());
        edit->setText(lastValid);
        return;
    }
    lastValid = text;
    target = text;
}

void frmEdit::txtTCaName_Change(const QString &text)
{
    // The card name goes into the card's control file, which commas and the like would break.
    takeFileNameText(m_txtTCaName, text, m_validCardName, m_context.state.SettingBuffer.CardName);
}

void frmEdit::txtName_Change(const QString &text)
{
    // The project name is also the name of the project's sentence folder, which "." or ".." would
    // put on the program's folder or its parent.
    if (!IsUsableNameText(text)) {
        m_context.msgBox.show(incorrectValueMessage());
        m_txtName->setText(m_validName);
        return;
    }
    takeFileNameText(m_txtName, text, m_validName, m_context.state.SettingBuffer.ProjectName);
}

void frmEdit::txtNo_Change(const QString &text)
{
    if (!fitsTheFile(text)) {
        m_context.msgBox.show(incorrectValueMessage());
        m_txtNo->setText(m_context.state.SettingBuffer.Creator);
        return;
    }
    m_context.state.SettingBuffer.Creator = text;
}

bool frmEdit::fitsTheFile(const QString &text) const
{
    return m_context.state.Encoding.firstUnencodable(text).isEmpty();
}

void frmEdit::txtExp_Change()
{
    const QString text = explanationForStorage(m_txtExp->toPlainText());
    if (text == m_validExplanation)
        return;
    if (!IsStorableExplanation(text) || !fitsTheFile(text)) {
        m_context.msgBox.show(incorrectValueMessage());
        m_txtExp->setPlainText(explanationForDisplay(m_validExplanation));
        m_txtExp->moveCursor(QTextCursor::End);
        return;
    }
    m_validExplanation = text;
    m_context.state.SettingBuffer.Explanation = text;
}

bool frmEdit::Form_Unload()
{
    const QString question = pendingWorkQuestion(m_context.state);
    if (!question.isEmpty() && !m_context.msgBox.confirm(question))
        return false;
    m_timCardC->stop();
    m_commands.NewSettingFile();
    m_programWindows->closeAll();
    m_context.state.CurrentFilePath.clear();
    emit projectMenusVisible(false);
    emit captionChanged(QStringLiteral("Arvon DQ-480"));
    return true;
}

void frmEdit::closeEvent(QCloseEvent *event)
{
    if (m_closeOnce.mayClose([this] { return Form_Unload(); })) {
        event->accept();
    } else {
        event->ignore();
    }
}
