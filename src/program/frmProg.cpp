#include "program/frmProg.h"
#include "audio/ProgramDuration.h"
#include "setting/OperatorMessages.h"
#include "widgets/ShownFileName.h"

#include "audio/AudioInfo.h"
#include "audio/ProgramPlayer.h"
#include "print/PrintSetting.h"
#include "program/ProgramEditsQuestion.h"
#include "program/ProgramNumberText.h"
#include "program/ProgramWindowTable.h"
#include "program/frmStep.h"
#include "setting/MsgBox.h"
#include "setting/ProgramOptionWord.h"
#include "setting/SharedState.h"
#include "widgets/DialogLayout.h"
#include "widgets/EntryCheck.h"
#include "widgets/NumberBox.h"
#include "widgets/WindowFrame.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QRadioButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QVBoxLayout>

namespace Word = ProgramOptionWord;
namespace Rules = ProgramFieldRules;

namespace {

constexpr int ProgramNameLength = 20;

// A box that shares a row with its scroll bar is no sibling of its caption, so screen readers get
// the caption's words as the box's own name.
void nameAfterCaption(QLineEdit *box, const QString &caption)
{
    QString name = caption;
    if (name.endsWith(QLatin1Char(':')))
        name.chop(1);
    box->setAccessibleName(name);
}

QRadioButton *namedRadio(const QString &caption, const char *objectName, QWidget *parent)
{
    auto *radio = new QRadioButton(caption, parent);
    radio->setObjectName(QLatin1String(objectName));
    return radio;
}

} // namespace

frmProg::frmProg(AppContext &context, ProgramWindowTable &table, int slot, int programNumber,
                 QMdiArea *mdiArea, QWidget *parent)
    : QWidget(parent)
    , m_context(context)
    , m_table(&table)
    , m_slot(slot)
    , m_programNumber(programNumber)
    , m_p(programNumber - 1)
    , m_mdiArea(mdiArea)
{
    setObjectName(QStringLiteral("frmProg"));
    setAttribute(Qt::WA_DeleteOnClose);
    buildControls();
    Form_Load();
    SharedState &state = m_context.state;
    // A program copied over this one replaces what the window shows.
    connect(&state, &SharedState::programReplaced, this, [this](int number) {
        if (number == m_programNumber)
            showWorkingCopy();
    });
    // Edits discarded elsewhere (the step window's Close, the sentence table's Cancel) must not go
    // on showing here; the window's own discard happens as it closes.
    connect(&state, &SharedState::workingCopyReverted, this, [this] {
        if (!m_unloading && !m_closeOnce.agreed())
            showWorkingCopy();
    });
    // The playing time follows the steps as they are applied.
    connect(&state, &SharedState::settingCommitted, this, [this](int section) {
        if (section == SettingSection::Steps)
            showPlayingTime();
    });
}

frmProg::~frmProg()
{
    if (m_table)
        m_table->release(m_slot);
}

void frmProg::buildControls()
{
    m_lblProgNo = new QLabel(this);
    m_lblProgNo->setObjectName(QStringLiteral("lblProgNo"));
    m_txtProgName = namedLineEdit("txtProgName", this);
    m_txtProgName->setMaxLength(ProgramNameLength);
    auto *lblProgName = new QLabel(tr("Program name:"), this);
    lblProgName->setObjectName(QStringLiteral("lblProgName"));
    lblProgName->setBuddy(m_txtProgName);
    m_cmbPrgMethod = new QComboBox(this);
    m_cmbPrgMethod->setObjectName(QStringLiteral("cmbPrgMethod"));
    auto *lblProgMethod = new QLabel(tr("Playback method"), this);
    lblProgMethod->setObjectName(QStringLiteral("lblProgMethod"));
    lblProgMethod->setBuddy(m_cmbPrgMethod);

    m_fraPrg1 = new QGroupBox(tr("Repeat"), this);
    m_fraPrg1->setObjectName(QStringLiteral("fraPrg1"));
    m_txtPrgNo = namedLineEdit("txtPrgNo", m_fraPrg1);
    m_vscNo = numberBar("vscNo", tr("Repeat No: up or down"), m_fraPrg1);
    m_vscNo->setRange(0, Rules::CountBarMax);
    m_lblPrgNo = new QLabel(tr("Repeat No:"), m_fraPrg1);
    m_lblPrgNo->setObjectName(QStringLiteral("lblPrgNo"));
    m_lblPrgNo->setBuddy(m_txtPrgNo);
    nameAfterCaption(m_txtPrgNo, m_lblPrgNo->text());
    auto *repeatRow = new QHBoxLayout(m_fraPrg1);
    repeatRow->addWidget(m_lblPrgNo);
    repeatRow->addWidget(numberBox(m_txtPrgNo, m_vscNo, m_fraPrg1));
    repeatRow->addStretch();

    m_fraPrg2 = new QGroupBox(tr("Interval"), this);
    m_fraPrg2->setObjectName(QStringLiteral("fraPrg2"));
    m_txtPrgInt = namedLineEdit("txtPrgInt", m_fraPrg2);
    m_vscInt = numberBar("vscInt", tr("Interval: up or down"), m_fraPrg2);
    m_lblPrgInt = new QLabel(m_fraPrg2);
    m_lblPrgInt->setObjectName(QStringLiteral("lblPrgInt"));
    m_lblPrgInt->setBuddy(m_txtPrgInt);
    setIntervalCaption(tr("Interval timer:"));
    m_optPrgInt[0] = namedRadio(tr("sec"), "optPrgInt_0", m_fraPrg2);
    m_optPrgInt[1] = namedRadio(tr("min"), "optPrgInt_1", m_fraPrg2);
    auto *intervalRow = new QHBoxLayout(m_fraPrg2);
    intervalRow->addWidget(m_lblPrgInt);
    intervalRow->addWidget(numberBox(m_txtPrgInt, m_vscInt, m_fraPrg2));
    intervalRow->addWidget(m_optPrgInt[0]);
    intervalRow->addWidget(m_optPrgInt[1]);
    intervalRow->addStretch();

    m_fraPrg3 = new QGroupBox(tr("Interval busy"), this);
    m_fraPrg3->setObjectName(QStringLiteral("fraPrg3"));
    m_optPrgBusy[0] = namedRadio(tr("ON"), "optPrgBusy_0", m_fraPrg3);
    m_optPrgBusy[1] = namedRadio(tr("OFF"), "optPrgBusy_1", m_fraPrg3);
    auto *busyRow = new QHBoxLayout(m_fraPrg3);
    busyRow->addWidget(m_optPrgBusy[0]);
    busyRow->addWidget(m_optPrgBusy[1]);
    busyRow->addStretch();

    m_txtAutoVol = namedLineEdit("txtAutoVol", this);
    m_txtAutoVol->setMaxLength(1);
    m_vsAutoVol = numberBar("vsAutoVol", tr("Output level: up or down"), this);
    m_vsAutoVol->setRange(0, 9);
    auto *lblAutoVol = new QLabel(tr("Output level"), this);
    lblAutoVol->setObjectName(QStringLiteral("lblAutoVol"));
    lblAutoVol->setBuddy(m_txtAutoVol);
    nameAfterCaption(m_txtAutoVol, lblAutoVol->text());

    m_cmdProgStep = namedButton(tr("Step input"), "cmdProgStep", this);
    auto *cmdPrint = namedButton(tr("Print"), "cmdPrint", this);
    auto *cmdProgOk = namedButton(tr("OK"), "cmdProgOk", this);
    auto *cmdProgClose = namedButton(tr("Cancel"), "cmdProgClose", this);
    m_cmdProgSave = namedButton(tr("Apply"), "cmdProgSave", this);

    auto *form = new QGridLayout;
    form->addWidget(lblProgName, 0, 0);
    form->addWidget(m_txtProgName, 0, 1);
    form->addWidget(lblProgMethod, 1, 0);
    form->addWidget(m_cmbPrgMethod, 1, 1);
    form->addWidget(lblAutoVol, 2, 0);
    form->addWidget(numberBox(m_txtAutoVol, m_vsAutoVol, this, 40), 2, 1, Qt::AlignLeft);
    m_lblPrgTime = new QLabel(this);
    m_lblPrgTime->setObjectName(QStringLiteral("lblPrgTime"));
    m_lblPrgPlayed = new QLabel(this);
    m_lblPrgPlayed->setObjectName(QStringLiteral("lblPrgPlayed"));
    m_cmdProgPlay = namedButton(tr("Play program"), "cmdProgPlay", this);
    m_cmdProgPlay->setToolTip(tr("Plays the program's steps on the PC's audio output as the device will."));
    m_cmdProgStop = namedButton(tr("Stop"), "cmdProgStop", this);
    m_cmdProgStop->setEnabled(false);
    auto *playRow = new QHBoxLayout;
    playRow->addWidget(m_lblPrgTime);
    playRow->addWidget(m_lblPrgPlayed);
    playRow->addStretch();
    playRow->addWidget(m_cmdProgPlay);
    playRow->addWidget(m_cmdProgStop);
    form->addLayout(playRow, 3, 0, 1, 3);
    m_lblPrgStatus = new QLabel(this);
    m_lblPrgStatus->setObjectName(QStringLiteral("lblPrgStatus"));
    m_lblPrgStatus->setWordWrap(true);
    m_lblPrgStatus->setTextInteractionFlags(Qt::TextSelectableByMouse);
    form->addWidget(m_lblPrgStatus, 4, 0, 1, 3);
    m_player = new ProgramPlayer(this);
    form->setColumnStretch(2, 1);
    // The frames keep their places while hidden, so the window does not jump between methods.
    for (QGroupBox *frame : {m_fraPrg1, m_fraPrg2, m_fraPrg3}) {
        QSizePolicy policy = frame->sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        frame->setSizePolicy(policy);
    }
    auto *frames = new QGridLayout;
    frames->addWidget(m_fraPrg2, 0, 0, 1, 2);
    frames->addWidget(m_fraPrg1, 1, 0);
    frames->addWidget(m_fraPrg3, 1, 1);
    auto *buttons = buttonRow({cmdProgOk, cmdProgClose, m_cmdProgSave});
    buttons->insertWidget(0, m_cmdProgStep);
    buttons->insertWidget(1, cmdPrint);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_lblProgNo);
    layout->addLayout(form);
    layout->addLayout(frames);
    layout->addStretch();
    layout->addLayout(buttons);
    // Tab goes down the window as it is drawn, not in the order the controls were made. Playing came
    // to this window after its fields and buttons: it comes last, so the keys an operator knows
    // still reach the controls they always did.
    chainTabOrder({m_txtProgName, m_cmbPrgMethod, m_txtAutoVol, m_txtPrgInt, m_optPrgInt[0], m_optPrgInt[1],
                   m_txtPrgNo, m_optPrgBusy[0], m_optPrgBusy[1], m_cmdProgStep, cmdPrint, cmdProgOk,
                   cmdProgClose, m_cmdProgSave, m_cmdProgPlay, m_cmdProgStop});
    // Escape is the Cancel button, as in a dialog.
    auto *escape = new QShortcut(QKeySequence::Cancel, this, cmdProgClose, &QPushButton::click);
    escape->setContext(Qt::WidgetWithChildrenShortcut);

    connect(m_cmbPrgMethod, &QComboBox::activated, this, &frmProg::cmbPrgMethod_Click);
    m_cmbPrgMethod->installEventFilter(this);
    connect(m_optPrgInt[0], &QRadioButton::clicked, this, [this] { optPrgInt_Click(0); });
    connect(m_optPrgInt[1], &QRadioButton::clicked, this, [this] { optPrgInt_Click(1); });
    connect(m_vscInt, &QScrollBar::valueChanged, this, &frmProg::vscInt_Change);
    connect(m_vscNo, &QScrollBar::valueChanged, this, &frmProg::vscNo_Change);
    connect(m_vsAutoVol, &QScrollBar::valueChanged, this, &frmProg::vsAutoVol_Change);
    const std::pair<QLineEdit *, bool (frmProg::*)()> checkedFields[] = {
        {m_txtPrgInt, &frmProg::txtPrgInt_LostFocus},
        {m_txtPrgNo, &frmProg::txtPrgNo_LostFocus},
        {m_txtAutoVol, &frmProg::txtAutoVol_LostFocus},
    };
    for (const auto &[field, check] : checkedFields) {
        auto *entry = new EntryCheck(field, [this, check = check] { return (this->*check)(); });
        connect(field, &QLineEdit::returnPressed, entry, &EntryCheck::checkPending);
        // Typing is a change: Apply is there to take it.
        connect(field, &QLineEdit::textEdited, this, &frmProg::setModified);
    }
    connect(m_optPrgBusy[0], &QRadioButton::clicked, this, [this] { optPrgBusy_Click(0); });
    connect(m_optPrgBusy[1], &QRadioButton::clicked, this, [this] { optPrgBusy_Click(1); });
    connect(m_txtProgName, &QLineEdit::editingFinished, this, &frmProg::txtProgName_LostFocus);
    connect(m_txtProgName, &QLineEdit::textEdited, this, &frmProg::txtProgName_Change);
    connect(m_cmdProgStep, &QPushButton::clicked, this, &frmProg::cmdProgStep_Click);
    connect(cmdPrint, &QPushButton::clicked, this, &frmProg::cmdPrint_Click);
    connect(cmdProgOk, &QPushButton::clicked, this, &frmProg::cmdProgOk_Click);
    connect(cmdProgClose, &QPushButton::clicked, this, &frmProg::cmdProgClose_Click);
    connect(m_cmdProgSave, &QPushButton::clicked, this, &frmProg::cmdProgSave_Click);
    connect(m_cmdProgPlay, &QPushButton::clicked, this, &frmProg::cmdProgPlay_Click);
    connect(m_cmdProgStop, &QPushButton::clicked, this, &frmProg::cmdProgStop_Click);
    connect(m_player, &ProgramPlayer::progressed, this, &frmProg::showPlaying);
    connect(m_player, &ProgramPlayer::finished, this, &frmProg::playFinished);
}

qint32 &frmProg::option()
{
    return m_context.state.SettingBuffer.ProgramOption[m_p];
}

QString frmProg::methodName() const
{
    return Word::methodName(m_method);
}

frmStep *frmProg::stepWindow() const
{
    return m_stepWindow;
}

bool frmProg::minutesSelected() const
{
    return m_optPrgInt[1]->isChecked();
}

bool frmProg::isEndless() const
{
    return m_method == Word::Endless;
}

void frmProg::setIntervalCaption(const QString &caption)
{
    m_lblPrgInt->setText(caption);
    nameAfterCaption(m_txtPrgInt, caption);
}

void frmProg::setModified()
{
    m_cmdProgSave->setEnabled(true);
}

void frmProg::setBar(QScrollBar *bar, int value)
{
    const QSignalBlocker block(bar);
    bar->setValue(value);
}

void frmProg::setUnitBarRange(bool minutes)
{
    const QSignalBlocker block(m_vscInt);
    m_vscInt->setRange(0, minutes ? Rules::MinutesBarMax : Rules::SecondsBarMax);
}

void frmProg::selectUnit(int index)
{
    m_optPrgInt[index]->setChecked(true);
    setUnitBarRange(index == 1);
}

void frmProg::Form_Load()
{
    const SharedState &state = m_context.state;
    setWindowTitle(tr("Program : ") + shownFileName(state.ProjectFileName));
    m_lblProgNo->setText(tr("Program No:") + ProgramNumberText::format(m_programNumber));
    for (int method = Word::Continuous; method <= Word::Endless; ++method)
        m_cmbPrgMethod->addItem(QString::number(method + 1) + QLatin1Char('.') + Word::methodName(method));
    m_method = Word::Continuous;
    showWorkingCopy();
}

void frmProg::showWorkingCopy()
{
    const SharedState &state = m_context.state;
    const SettingData &buffer = state.SettingBuffer;
    m_txtProgName->setText(buffer.ProgramName[m_p]);
    m_validProgName = buffer.ProgramName[m_p];

    const Rules::ShownInterval interval
        = Rules::shownInterval(buffer.RepeatInterval[m_p], Rules::OpensInMinutesFrom);
    selectUnit(interval.minutes ? 1 : 0);
    m_txtPrgInt->setText(interval.text);
    setBar(m_vscInt, interval.barValue);
    m_txtPrgNo->setText(QString::number(buffer.RepeatCount[m_p]));
    txtPrgNo_LostFocus();

    const int method = Word::methodOf(option());
    if (method == Word::Endless) {
        // The play interval shown is the committed one.
        const std::optional<int> seconds = Word::endlessSeconds(state.Setting.ProgramOption[m_p]);
        if (!seconds)
            m_context.msgBox.show(incorrectValueMessage());
        m_txtPrgInt->setText(seconds && *seconds > 0 ? QString::number(*seconds) : tr("OFF"));
    }
    m_method = method;
    m_cmbPrgMethod->setCurrentIndex(method);
    cmbPrgMethod_Click();

    m_optPrgBusy[(option() & Word::BusyBit) ? 0 : 1]->setChecked(true);
    showLevel(Word::outputLevel(option()));
    showPlayingTime();
    m_cmdProgSave->setEnabled(false);
}

void frmProg::showPlayingTime()
{
    const SharedState &state = m_context.state;
    m_lblPrgTime->setText(tr("Playing time: %1")
                              .arg(programPlayingTimeText(programPlayingTime(state.SettingBuffer, m_p,
                                                                             sentenceSoundFolders(state)))));
}

void frmProg::cmbPrgMethod_Click()
{
    const int k = m_cmbPrgMethod->currentIndex();
    m_optPrgInt[1]->setVisible(true);
    option() &= Word::BelowMethod;
    m_fraPrg1->setVisible(k == Word::Repeat);
    m_fraPrg2->setVisible(k != Word::Continuous);
    m_fraPrg3->setVisible(k == Word::SingleProgram || k == Word::Repeat);
    // Kept on purpose: Endless has no steps to enter, as this window has always had it.
    m_cmdProgStep->setEnabled(k != Word::Endless);
    option() |= Word::MethodBits[k];
    m_method = k;
    if (k == Word::SingleProgram || k == Word::Repeat) {
        m_fraPrg3->setTitle(tr("Interval busy"));
        m_optPrgBusy[0]->setText(tr("ON"));
        m_optPrgBusy[1]->setText(tr("OFF"));
    }
    if (k == Word::SingleProgram)
        setIntervalCaption(tr("Interval timer:"));
    if (k == Word::Repeat) {
        setIntervalCaption(tr("Repeat Interval:"));
        m_lblPrgNo->setText(tr("Repeat No:"));
        m_txtPrgNo->setText(QString::number(m_context.state.SettingBuffer.RepeatCount[m_p]));
        txtPrgNo_LostFocus();
    }
    if (k == Word::Endless) {
        setIntervalCaption(tr("Play Interval(sec):"));
        if (minutesSelected())
            optPrgInt_Click(0);
        selectUnit(0);
        m_optPrgInt[1]->setChecked(false);
        m_optPrgInt[1]->setVisible(false);
    }
    if (k == Word::Repeat || k == Word::Endless)
        redisplayInterval();
    setModified();
    emit methodChanged(methodName());
}

void frmProg::cmbPrgMethod_LostFocus()
{
    // Also turns a sign-extended Endless word from a file into the plain form.
    option() = Word::withMethod(option(), m_cmbPrgMethod->currentIndex());
}

bool frmProg::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_cmbPrgMethod && event->type() == QEvent::FocusOut)
        cmbPrgMethod_LostFocus();
    return QWidget::eventFilter(watched, event);
}

void frmProg::redisplayInterval()
{
    const Rules::ShownInterval interval
        = Rules::shownInterval(m_context.state.SettingBuffer.RepeatInterval[m_p], Rules::ShowsInMinutesFrom);
    // Kept on purpose: an interval in minutes selects the minutes unit even for Endless, whose
    // method change has just hidden it; the device's software always redisplayed it this way.
    if (interval.minutes) {
        selectUnit(1);
        m_txtPrgInt->setText(interval.text);
    } else if (!isEndless()) {
        m_txtPrgInt->setText(interval.text);
        selectUnit(0);
    }
    txtPrgInt_LostFocus();
}

void frmProg::optPrgInt_Click(int index)
{
    const bool minutes = index == 1;
    m_optPrgInt[index]->setChecked(true);
    setUnitBarRange(minutes);
    setBar(m_vscInt, minutes ? Rules::TwoMinutesBar : Rules::SecondsOffBar);
    vscInt_Change(m_vscInt->value());
    setModified();
}

void frmProg::showInterval(const Rules::Interval &shown)
{
    if (shown.refused)
        m_context.msgBox.show(incorrectValueMessage());
    m_txtPrgInt->setText(shown.text);
    setBar(m_vscInt, shown.barValue);
    if (!shown.stores)
        return;
    SettingData &buffer = m_context.state.SettingBuffer;
    if (shown.endlessSeconds) {
        buffer.RepeatInterval[m_p] = 0;
        option() = Word::withEndlessSeconds(option(), *shown.endlessSeconds);
    } else {
        buffer.RepeatInterval[m_p] = shown.repeatInterval;
    }
}

void frmProg::vscInt_Change(int value)
{
    showInterval(minutesSelected() ? Rules::minutesBarMoved(value)
                                   : Rules::secondsBarMoved(value, isEndless()));
    setModified();
}

bool frmProg::txtPrgInt_LostFocus()
{
    const Rules::Interval shown = Rules::checkInterval(m_txtPrgInt->text(), minutesSelected(), isEndless());
    showInterval(shown);
    return !shown.refused;
}

void frmProg::showRepeatCount(const Rules::RepeatCount &shown)
{
    if (shown.refused)
        m_context.msgBox.show(incorrectValueMessage());
    m_txtPrgNo->setText(shown.text);
    setBar(m_vscNo, shown.barValue);
    m_context.state.SettingBuffer.RepeatCount[m_p] = shown.count;
}

void frmProg::vscNo_Change(int value)
{
    showRepeatCount(Rules::countBarMoved(value));
    setModified();
}

bool frmProg::txtPrgNo_LostFocus()
{
    const Rules::RepeatCount shown = Rules::checkRepeatCount(m_txtPrgNo->text());
    showRepeatCount(shown);
    return !shown.refused;
}

void frmProg::showLevel(int level)
{
    m_txtAutoVol->setText(QString::number(level));
    setBar(m_vsAutoVol, 9 - level);
}

bool frmProg::txtAutoVol_LostFocus()
{
    const std::optional<int> level = Rules::parseLevel(m_txtAutoVol->text());
    if (!level) {
        m_context.msgBox.show(incorrectValueMessage());
        showLevel(Word::outputLevel(option()));
        return false;
    }
    if (*level != Word::outputLevel(option())) {
        option() = Word::withOutputLevel(option(), *level);
        setModified();
    }
    showLevel(*level);
    return true;
}

void frmProg::vsAutoVol_Change(int value)
{
    const int level = Rules::levelFromBar(value);
    option() = Word::withOutputLevel(option(), level);
    showLevel(level);
    setModified();
}

void frmProg::optPrgBusy_Click(int index)
{
    option() = index == 0 ? option() | Word::BusyBit : option() & ~Word::BusyBit;
    setModified();
}

void frmProg::txtProgName_Change(const QString &text)
{
    // The name goes into the setting file in its code page; a character it cannot hold would come
    // back as another.
    if (!m_context.state.Encoding.firstUnencodable(text).isEmpty()) {
        m_context.msgBox.show(incorrectValueMessage());
        m_txtProgName->setText(m_validProgName);
        return;
    }
    m_validProgName = text;
    setModified();
}

void frmProg::txtProgName_LostFocus()
{
    const QString name = m_txtProgName->text();
    if (name.size() <= m_txtProgName->maxLength())
        m_context.state.SettingBuffer.ProgramName[m_p] = name;
}

void frmProg::cmdProgSave_Click()
{
    if (!checkPendingEntries(this))
        return;
    txtProgName_LostFocus();
    Word::normaliseForApply(m_context.state.SettingBuffer);
    m_context.state.CopyBufferToSetting(SettingSection::CardSentencesPrograms);
    m_cmdProgSave->setEnabled(false);
}

void frmProg::cmdProgOk_Click()
{
    if (!checkPendingEntries(this))
        return;
    txtProgName_LostFocus();
    Word::normaliseForOk(m_context.state.SettingBuffer);
    m_context.state.CopyBufferToSetting(SettingSection::CardSentencesPrograms);
    closeFrame();
}

void frmProg::cmdProgClose_Click()
{
    // A value typed last counts as an edit, so that closing asks before it is dropped.
    checkPendingEntries(this);
    closeFrame();
}

void frmProg::closeFrame()
{
    closeWindowFrame(this);
}

void frmProg::cmdProgStep_Click()
{
    if (!checkPendingEntries(this))
        return;
    m_context.state.StepProgramNumber = m_programNumber;
    if (!m_stepWindow) {
        m_stepWindow = new frmStep(m_context, methodName());
        connect(this, &frmProg::methodChanged, m_stepWindow, &frmStep::showMethod);
        if (m_mdiArea) {
            QMdiSubWindow *frame = m_mdiArea->addSubWindow(m_stepWindow);
            frame->setAttribute(Qt::WA_DeleteOnClose);
            // Just below its program window, so the two are seen together.
            if (auto *programFrame = qobject_cast<QMdiSubWindow *>(parentWidget()))
                frame->move(programFrame->pos() + QPoint(40, 60));
            // Once the steps are done the operator goes on here; left to itself the area brings
            // forward whichever window takes the focus next, often the card edit window over this.
            connect(frame, &QObject::destroyed, this, [this] {
                auto *programFrame = qobject_cast<QMdiSubWindow *>(parentWidget());
                if (programFrame && !m_closeOnce.agreed() && programFrame->isVisible())
                    m_mdiArea->setActiveSubWindow(programFrame);
            });
        }
    }
    m_stepWindow->showPlayingStep(m_player->isPlaying() ? m_playingStep : -1);
    m_stepWindow->show();
    if (auto *frame = qobject_cast<QMdiSubWindow *>(m_stepWindow->parentWidget()); frame && m_mdiArea)
        m_mdiArea->setActiveSubWindow(frame);
}

void frmProg::cmdPrint_Click()
{
    if (!checkPendingEntries(this))
        return;
    showPrintSetting(m_context, PrintKind::OneProgram, m_programNumber, this);
}

void frmProg::cmdProgPlay_Click()
{
    // What was typed last plays too, once checked.
    if (!checkPendingEntries(this))
        return;
    const SharedState &state = m_context.state;
    QString error;
    m_stopPressed = false;
    if (!m_player->play(state.SettingBuffer, m_p, sentenceSoundFolders(state), error)) {
        m_context.msgBox.show(tr("Cannot play %1: %2").arg(ProgramNumberText::format(m_programNumber), error),
                              MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
        return;
    }
    m_cmdProgPlay->setEnabled(false);
    m_cmdProgStop->setEnabled(true);
    m_cmdProgStop->setFocus();
    m_playingStep = -2;
    m_lblPrgPlayed->setText(tr("Played %1").arg(formatDuration(0.0)));
    showPlayStatus(tr("Playing"));
}

void frmProg::cmdProgStop_Click()
{
    m_stopPressed = true;
    m_player->stop();
}

void frmProg::showPlaying(int step, int pass, double seconds)
{
    m_lblPrgPlayed->setText(tr("Played %1").arg(formatDuration(seconds)));
    if (step == m_playingStep && pass == m_playingPass)
        return;
    m_playingStep = step;
    m_playingPass = pass;
    if (m_stepWindow)
        m_stepWindow->showPlayingStep(step);
    const int passes = m_player->passes();
    // No step is heard only in the interval after a pass.
    QString now = step >= 0 ? tr("Playing step %1: %2").arg(step + 1).arg(m_player->stepText(step))
                            : tr("Waiting for pass %1").arg(pass + 1);
    if (passes != 1 && step >= 0)
        now = passes == 0 ? tr("%1, pass %2").arg(now).arg(pass)
                          : tr("%1, pass %2 of %3").arg(now).arg(pass).arg(passes);
    showPlayStatus(now);
}

void frmProg::playFinished(const QString &problem)
{
    m_cmdProgPlay->setEnabled(true);
    m_cmdProgStop->setEnabled(false);
    m_playingStep = -1;
    if (m_stepWindow)
        m_stepWindow->showPlayingStep(-1);
    if (!problem.isEmpty()) {
        showPlayStatus(tr("The playing stopped: %1").arg(problem));
        m_context.msgBox.show(
            tr("Cannot play %1: %2").arg(ProgramNumberText::format(m_programNumber), problem),
            MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
        return;
    }
    showPlayStatus(m_stopPressed ? tr("Stopped.") : tr("Played to the end."));
}

void frmProg::showPlayStatus(const QString &now)
{
    QStringList lines {now};
    for (const SkippedStep &skipped : m_player->skipped())
        lines << tr("Skipped step %1, %2: %3").arg(skipped.step + 1).arg(skipped.shown, skipped.reason);
    m_lblPrgStatus->setText(lines.join(QLatin1Char('\n')));
}

bool frmProg::Form_Unload()
{
    m_unloading = true;
    const bool discarded = mayDiscardProgramEdits(m_context.state, m_context.msgBox);
    m_unloading = false;
    if (!discarded)
        return false;
    if (m_stepWindow)
        m_stepWindow->closeFrame();
    return true;
}

void frmProg::closeEvent(QCloseEvent *event)
{
    if (!m_closeOnce.mayClose([this] { return Form_Unload(); })) {
        event->ignore();
        return;
    }
    event->accept();
    m_player->stop();
    // The slot is free as soon as the window has agreed to close, not when it is deleted later.
    if (m_table)
        m_table->release(m_slot);
}
