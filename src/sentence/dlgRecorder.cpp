#include "sentence/dlgRecorder.h"

#include "audio/AudioInfo.h"
#include "audio/SentenceName.h"
#include "audio/SentencePlayer.h"
#include "sentence/LevelMeter.h"
#include "sentence/TakeRecorder.h"
#include "sentence/dlgSentenceNames.h"
#include "setting/MsgBox.h"
#include "setting/OperatorMessages.h"
#include "widgets/DialogLayout.h"

#include <QComboBox>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

dlgRecorder::dlgRecorder(AppContext &context, int entry, const QStringList &taken, const QString &takePath,
                         Enter enter, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
    , m_taken(taken)
    , m_enter(std::move(enter))
{
    setObjectName(QStringLiteral("dlgRecorder"));
    setWindowTitle(tr("Record a sentence for entry %1").arg(entry + 1, 3, 10, QLatin1Char('0')));
    m_recorder = new TakeRecorder(takePath, this);
    m_player = new SentencePlayer(this);

    m_cmbRecInput = new QComboBox(this);
    m_cmbRecInput->setObjectName(QStringLiteral("cmbRecInput"));
    auto *lblRecInput = new QLabel(tr("Input:"), this);
    lblRecInput->setBuddy(m_cmbRecInput);
    m_lvlRecInput = new LevelMeter(this);
    m_lvlRecInput->setObjectName(QStringLiteral("lvlRecInput"));
    auto *lblRecLevel = new QLabel(tr("Level:"), this);
    m_cmdRecRecord = namedButton(tr("Record"), "cmdRecRecord", this);
    m_cmdRecStop = namedButton(tr("Stop"), "cmdRecStop", this);
    m_lblRecTime = new QLabel(this);
    m_lblRecTime->setObjectName(QStringLiteral("lblRecTime"));
    m_lblRecTime->setAccessibleName(tr("Time recorded"));
    m_cmdRecPlay = namedButton(tr("Play"), "cmdRecPlay", this);
    m_cmdRecPlay->setToolTip(tr("Plays the take as it was recorded."));
    m_txtRecName = new QLineEdit(this);
    m_txtRecName->setObjectName(QStringLiteral("txtRecName"));
    m_txtRecName->setMaxLength(LongestSentenceName);
    m_txtRecName->setToolTip(sentenceNameRule());
    auto *lblRecName = new QLabel(tr("Name:"), this);
    lblRecName->setBuddy(m_txtRecName);
    m_cmdRecOk = namedButton(tr("OK"), "cmdRecOk", this);
    m_cmdRecOk->setToolTip(tr("Makes a sentence of the take, as an imported recording, and enters it."));
    auto *cmdRecCancel = namedButton(tr("Cancel"), "cmdRecCancel", this);

    auto *grid = new QGridLayout;
    grid->addWidget(lblRecInput, 0, 0);
    grid->addWidget(m_cmbRecInput, 0, 1, 1, 4);
    grid->addWidget(lblRecLevel, 1, 0);
    grid->addWidget(m_lvlRecInput, 1, 1, 1, 4);
    grid->addWidget(m_cmdRecRecord, 2, 1);
    grid->addWidget(m_cmdRecStop, 2, 2);
    grid->addWidget(m_lblRecTime, 2, 3);
    grid->addWidget(m_cmdRecPlay, 2, 4, Qt::AlignRight);
    grid->addWidget(lblRecName, 3, 0);
    auto *nameRow = new QHBoxLayout;
    nameRow->addWidget(m_txtRecName);
    nameRow->addWidget(new QLabel(QStringLiteral(".MP2"), this));
    nameRow->addStretch();
    grid->addLayout(nameRow, 3, 1, 1, 4);
    grid->setColumnStretch(3, 1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(grid);
    layout->addStretch();
    layout->addLayout(buttonRow({m_cmdRecOk, cmdRecCancel}));
    chainTabOrder(
        {m_cmbRecInput, m_cmdRecRecord, m_cmdRecStop, m_cmdRecPlay, m_txtRecName, m_cmdRecOk, cmdRecCancel});

    connect(m_cmdRecRecord, &QPushButton::clicked, this, &dlgRecorder::cmdRecRecord_Click);
    connect(m_cmdRecStop, &QPushButton::clicked, this, &dlgRecorder::cmdRecStop_Click);
    connect(m_cmdRecPlay, &QPushButton::clicked, this, &dlgRecorder::cmdRecPlay_Click);
    connect(m_cmdRecOk, &QPushButton::clicked, this, &dlgRecorder::cmdRecOk_Click);
    connect(cmdRecCancel, &QPushButton::clicked, this, &dlgRecorder::cmdRecCancel_Click);
    connect(m_recorder, &TakeRecorder::levelChanged, m_lvlRecInput, &LevelMeter::setLevel);
    connect(m_recorder, &TakeRecorder::elapsedChanged, this, &dlgRecorder::showTime);
    connect(m_recorder, &TakeRecorder::finished, this, &dlgRecorder::takeFinished);

    // The name Import would give a recording of the take's file name, free of the other entries'.
    m_txtRecName->setText(QFileInfo(proposeSentenceName(takePath, m_taken)).completeBaseName());
    listInputs();
    showTime(0.0);
    showState();
    resize(sizeHint().expandedTo(QSize(460, 0)));
    m_cmdRecRecord->setFocus();
}

dlgRecorder::~dlgRecorder() = default;

void dlgRecorder::listInputs()
{
    const QByteArray chosen = m_cmbRecInput->currentData().toByteArray();
    m_inputsError.clear();
    m_inputs = soundInputs(m_inputsError);
    m_cmbRecInput->clear();
    int kept = -1;
    int standard = -1;
    for (const SoundInput &input : m_inputs) {
        if (input.id == chosen)
            kept = m_cmbRecInput->count();
        if (input.isDefault)
            standard = m_cmbRecInput->count();
        m_cmbRecInput->addItem(input.description, input.id);
    }
    // The operator's choice while it is there, else the system's own.
    m_cmbRecInput->setCurrentIndex(kept >= 0           ? kept
                                       : standard >= 0 ? standard
                                                       : (m_inputs.isEmpty() ? -1 : 0));
}

void dlgRecorder::showTime(double seconds)
{
    m_lblRecTime->setText(formatDuration(seconds));
}

void dlgRecorder::showState()
{
    const bool recording = m_recorder->isRecording();
    const bool take = m_recorder->hasTake();
    m_cmbRecInput->setEnabled(!recording);
    m_cmdRecRecord->setEnabled(!recording);
    m_cmdRecStop->setEnabled(recording || take);
    m_cmdRecPlay->setEnabled(take);
    m_cmdRecOk->setEnabled(take);
}

void dlgRecorder::cmdRecRecord_Click()
{
    m_player->stop();
    // An input plugged in or pulled out since the list was made shows in it now.
    listInputs();
    if (m_inputs.isEmpty()) {
        m_context.msgBox.show(m_inputsError.isEmpty()
                                  ? tr("This PC has no audio input: connect a microphone, then press Record "
                                       "again.")
                                  : tr("Cannot record: %1").arg(m_inputsError),
                              MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
        return;
    }
    QString error;
    if (!m_recorder->start(m_cmbRecInput->currentData().toByteArray(), error)) {
        m_context.msgBox.show(error, MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
        showState();
        return;
    }
    showState();
    m_cmdRecStop->setFocus();
}

void dlgRecorder::cmdRecStop_Click()
{
    m_player->stop();
    if (!m_recorder->isRecording())
        return;
    m_recorder->stop();
    // The end of the take may still be on its way: Stop has done its part until it is there.
    if (m_recorder->isRecording())
        m_cmdRecStop->setEnabled(false);
}

void dlgRecorder::takeFinished(const QString &message)
{
    m_lvlRecInput->clear();
    showState();
    if (!message.isEmpty())
        m_context.msgBox.show(message, MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
    if (m_recorder->hasTake())
        m_cmdRecPlay->setFocus();
}

void dlgRecorder::cmdRecPlay_Click()
{
    if (!m_recorder->hasTake())
        return;
    QString error;
    if (!m_player->play(m_recorder->path(), error))
        m_context.msgBox.show(error, MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
}

void dlgRecorder::cmdRecOk_Click()
{
    if (!m_recorder->hasTake())
        return;
    const QString typed = m_txtRecName->text().trimmed();
    if (!isFittingSentenceName(typed) || m_taken.contains(sentenceFileName(typed), Qt::CaseInsensitive)) {
        m_context.msgBox.show(incorrectValueMessage());
        m_txtRecName->setFocus();
        m_txtRecName->selectAll();
        return;
    }
    m_player->stop();
    if (m_enter(m_recorder->path(), sentenceFileName(typed)))
        accept();
}

void dlgRecorder::cmdRecCancel_Click()
{
    reject();
}

void dlgRecorder::done(int result)
{
    m_player->stop();
    // Whatever closes the window, the take goes with it: the table has received its sentence, if any.
    m_recorder->abandon();
    QDialog::done(result);
}
