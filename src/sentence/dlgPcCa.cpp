#include "sentence/dlgPcCa.h"
#include "setting/OperatorMessages.h"
#include "widgets/ShownFileName.h"

#include "audio/AudioInfo.h"
#include "audio/ProgramDuration.h"
#include "audio/SentencePlayer.h"
#include "sentence/PathLabelText.h"
#include "sentence/RecordingImport.h"
#include "sentence/SentenceTableEdit.h"
#include "setting/MsgBox.h"
#include "setting/PathText.h"
#include "setting/SentenceFolderIndex.h"
#include "setting/SentenceFolders.h"
#include "setting/SentenceTable.h"
#include "setting/SharedState.h"
#include "setting/TextChecks.h"
#include "widgets/BoxColumns.h"
#include "widgets/DialogLayout.h"
#include "widgets/frmSetPath.h"

#include <QApplication>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QKeySequence>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QUrl>
#include <QVBoxLayout>

namespace Table = SentenceTableEdit;

namespace {

// The name of a dropped file: at most 12 characters after the last separator, else nothing.
QString droppedFileName(const QString &path)
{
    for (int k = 1; k <= 13 && k <= path.size(); ++k) {
        const QChar c = path[path.size() - k];
        if (c == QLatin1Char('\\') || c == QLatin1Char(':') || c == QLatin1Char('/'))
            return path.right(k - 1);
    }
    return QString();
}

} // namespace

dlgPcCa::dlgPcCa(AppContext &context, QWidget *parent)
    : QDialog(parent)
    , m_context(context)
{
    setObjectName(QStringLiteral("dlgPcCa"));
    setWindowModality(Qt::ApplicationModal);

    auto *cmdPcCaOk = namedButton(tr("OK"), "cmdPcCaOk", this);
    auto *cmdsentPath = namedButton(tr("Path set"), "cmdsentPath", this);
    auto *cmdPcCaClose = namedButton(tr("Cancel"), "cmdPcCaClose", this);
    m_cmdPcCaApp = namedButton(tr("Apply"), "cmdPcCaApp", this);
    auto *cmdPcCaDel = namedButton(tr("Delete"), "cmdPcCaDel", this);
    auto *cmdPcCaMov = namedButton(tr("Move forward"), "cmdPcCaMov", this);
    auto *cmdPcCaIns = namedButton(tr("Insert"), "cmdPcCaIns", this);
    auto *cmdPcCaAll = namedButton(tr("All file"), "cmdPcCaAll", this);
    m_hscCaPc = new QScrollBar(Qt::Horizontal, this);
    m_hscCaPc->setObjectName(QStringLiteral("hscCaPc"));
    m_hscCaPc->setAccessibleName(tr("Sentence columns"));
    auto *cmdPcCaImport = namedButton(tr("Import..."), "cmdPcCaImport", this);
    cmdPcCaImport->setToolTip(tr("Makes sentences of recordings, from the current entry on."));
    auto *cmdPcCaRecord = namedButton(tr("Record..."), "cmdPcCaRecord", this);
    cmdPcCaRecord->setToolTip(tr("Records a sentence at the PC into the current entry."));
    m_cmdPcCaPlay = namedButton(tr("Play"), "cmdPcCaPlay", this);
    // Ctrl+P: the boxes take the plain keys for editing names.
    m_cmdPcCaPlay->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_P));
    m_cmdPcCaPlay->setToolTip(tr("Plays the current entry's sentence (Ctrl+P)."));
    m_player = new SentencePlayer(this);
    if (!SentencePlayer::hasOutput()) {
        m_cmdPcCaPlay->setEnabled(false);
        m_cmdPcCaPlay->setToolTip(tr("This PC has no audio output."));
    }
    m_lblPcCaDuration = new QLabel(this);
    m_lblPcCaDuration->setObjectName(QStringLiteral("lblPcCaDuration"));
    m_lblsentPath = new QLabel(this);
    m_lblsentPath->setObjectName(QStringLiteral("lblsentPath"));

    auto *edits = new QHBoxLayout;
    for (QPushButton *button : {cmdPcCaAll, cmdPcCaIns, cmdPcCaDel, cmdPcCaMov, cmdPcCaImport, cmdPcCaRecord})
        edits->addWidget(button);
    edits->addStretch();
    edits->addWidget(m_lblPcCaDuration);
    edits->addWidget(m_cmdPcCaPlay);
    auto *pathRow = new QHBoxLayout;
    pathRow->addWidget(m_lblsentPath, 1);
    pathRow->addWidget(cmdsentPath);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(pathRow);
    layout->addWidget(buildEntryFrame());
    layout->addWidget(m_hscCaPc);
    layout->addLayout(edits);
    layout->addLayout(buttonRow({cmdPcCaOk, cmdPcCaClose, m_cmdPcCaApp}));
    QList<QWidget *> tabOrder {cmdsentPath};
    for (QLineEdit *box : m_boxes)
        tabOrder << box;
    tabOrder << cmdPcCaAll << cmdPcCaIns << cmdPcCaDel << cmdPcCaMov << cmdPcCaImport << cmdPcCaRecord
             << m_cmdPcCaPlay << cmdPcCaOk << cmdPcCaClose << m_cmdPcCaApp;
    chainTabOrder(tabOrder);

    connect(cmdPcCaOk, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaOk_Click);
    connect(cmdsentPath, &QPushButton::clicked, this, &dlgPcCa::cmdsentPath_Click);
    connect(cmdPcCaClose, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaClose_Click);
    connect(m_cmdPcCaApp, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaApp_Click);
    connect(cmdPcCaDel, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaDel_Click);
    connect(cmdPcCaMov, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaMov_Click);
    connect(cmdPcCaIns, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaIns_Click);
    connect(cmdPcCaAll, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaAll_Click);
    connect(m_hscCaPc, &QScrollBar::valueChanged, this, &dlgPcCa::hscCaPc_Change);
    connect(m_cmdPcCaPlay, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaPlay_Click);
    connect(cmdPcCaImport, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaImport_Click);
    connect(cmdPcCaRecord, &QPushButton::clicked, this, &dlgPcCa::cmdPcCaRecord_Click);
    Form_Load();
    // The operator starts in the table, not on a button.
    m_boxes[0]->setFocus();
}

dlgPcCa::~dlgPcCa()
{
    // Closing takes the focus from the box that has it; its "editing finished" must not reach a
    // dialog that is half gone.
    for (QLineEdit *box : m_boxes)
        disconnect(box, nullptr, this, nullptr);
}

QWidget *dlgPcCa::buildEntryFrame()
{
    m_columns
        = new BoxColumns(SentenceTableSize::Largest, Rows, VisibleColumns, QStringLiteral("WWWWWWWW.MP2"),
                         Table::MaxNameLength, {"entryView", "fraPcCa", "lblPcCa", "TxtPcCa", "lblPcCaTime"},
                         this, 3, QStringLiteral("00:00.0"));
    for (int i = 0; i < SentenceTableSize::Largest; ++i) {
        QLineEdit *edit = m_columns->box(i);
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::textEdited, this, [this, i] { TxtPcCa_Change(i); });
        connect(edit, &QLineEdit::editingFinished, this, [this, i] { TxtPcCa_LostFocus(i); });
        connect(edit, &QLineEdit::returnPressed, this, [this, i] { TxtPcCa_KeyDown_Enter(i); });
        m_boxes[i] = edit;
    }
    return m_columns;
}

void dlgPcCa::Form_Load()
{
    const SharedState &state = m_context.state;
    setWindowTitle(tr("Card creation Sentence data copy PC -> Card : ")
                   + shownFileName(state.ProjectFileName));
    const SettingData &buffer = state.SettingBuffer;
    m_table = buffer.sentenceTable();
    const int capacity = m_table.entries();
    for (int i = capacity; i < SentenceTableSize::Largest; ++i) {
        m_boxes[i]->setEnabled(false);
        m_boxes[i]->setVisible(false);
        m_columns->label(i)->setVisible(false);
        m_columns->note(i)->setVisible(false);
    }
    // Hidden columns take no room: the grid is laid out again for the table's size.
    m_columns->layOut();
    m_hscCaPc->setRange(0, capacity / Rows - VisibleColumns);
    m_hscCaPc->setPageStep(VisibleColumns);
    showEntries();
    showPath();
    m_cmdPcCaApp->setEnabled(false);
}

void dlgPcCa::showPath()
{
    m_lblsentPath->setText(pathLabelText(m_context.state.SentencePath));
    m_lblsentPath->setToolTip(m_context.state.SentencePath);
}

void dlgPcCa::showBox(int index, const QString &text)
{
    m_boxes[index]->setText(text);
    m_checkedText[index] = text;
    showBoxTime(index);
}

void dlgPcCa::showEntries()
{
    const SettingData &buffer = m_context.state.SettingBuffer;
    // The folders are listed once for the whole table.
    SentenceTimes times(sentenceSoundFolders(m_context.state));
    for (int i = 0; i <= m_table.limit(); ++i) {
        m_boxes[i]->setText(buffer.SentenceFileName[i]);
        m_checkedText[i] = buffer.SentenceFileName[i];
        showBoxTime(i, times);
    }
}

void dlgPcCa::showBoxTime(int index, SentenceTimes &times)
{
    const QString name = m_boxes[index]->text();
    const std::optional<double> seconds = name.isEmpty() ? std::nullopt : times.seconds(name);
    const QString text = seconds ? formatDuration(*seconds) : QString();
    m_columns->note(index)->setText(text);
    m_boxes[index]->setToolTip(text);
    m_boxes[index]->setAccessibleDescription(seconds ? tr("Playing time %1").arg(text) : QString());
}

void dlgPcCa::showBoxTime(int index)
{
    SentenceTimes times(sentenceSoundFolders(m_context.state));
    showBoxTime(index, times);
}

void dlgPcCa::setModified()
{
    m_cmdPcCaApp->setEnabled(true);
}

int dlgPcCa::indexOfBox(QObject *object) const
{
    const auto found = std::find(m_boxes.begin(), m_boxes.end(), object);
    return found == m_boxes.end() ? -1 : static_cast<int>(found - m_boxes.begin());
}

void dlgPcCa::TxtPcCa_Change(int index)
{
    setModified();
    // A name the setting file's code page cannot hold would come back as another name.
    const QString text = m_boxes[index]->text();
    if (!IsValidNameInCodePage(text, m_context.state.Encoding)) {
        m_context.msgBox.show(incorrectValueMessage());
        m_boxes[index]->clear();
    }
}

void dlgPcCa::takeIntoWorkFolder(const QString &name)
{
    const SharedState &state = m_context.state;
    const QString source = SentenceFolderIndex(state.SentencePath).find(name);
    QString error;
    if (!source.isEmpty()) {
        if (!StoreSentenceFile(state, m_context.msgBox, StoreMode::WorkFolder, source, error))
            m_context.msgBox.show(error, MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
        return;
    }
    // A file dropped from elsewhere is in the work folder already.
    if (SentenceFolderIndex(workFolder(state)).find(name).isEmpty())
        m_context.msgBox.show(tr("%1 is not in the sentence folder %2.").arg(name, state.SentencePath),
                              MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
}

bool dlgPcCa::TxtPcCa_LostFocus(int index)
{
    const QString text = m_boxes[index]->text();
    if (text == m_checkedText[index])
        return true;
    SettingData &buffer = m_context.state.SettingBuffer;
    if (text.isEmpty()) {
        Table::setEntry(buffer, index, QString());
        m_checkedText[index] = text;
        showBoxTime(index);
        return true;
    }
    // A dropped name has not been typed: it meets the typed names' checks here.
    if (!Table::isSentenceFileName(text) || !IsValidNameInCodePage(text, m_context.state.Encoding)) {
        Table::setEntry(buffer, index, QString());
        showBox(index, QString());
        m_context.msgBox.show(incorrectValueMessage());
        return false;
    }
    Table::setEntry(buffer, index, text);
    // Taken as checked before a message about its file can move the focus; its time is looked up
    // once the file is in the work folder.
    m_boxes[index]->setText(buffer.SentenceFileName[index]);
    m_checkedText[index] = buffer.SentenceFileName[index];
    takeIntoWorkFolder(buffer.SentenceFileName[index]);
    showBoxTime(index);
    return true;
}

void dlgPcCa::TxtPcCa_KeyDown_Enter(int index)
{
    // The last box of the table keeps the focus.
    const int last = m_context.state.SettingBuffer.sentenceTable().lastEntry();
    const int next = qMin(index + 1, last);
    revealBox(next);
    m_boxes[next]->setFocus();
}

void dlgPcCa::TxtPcCa_OLEDragDrop(int index, const QString &path)
{
    if (isRecordingToImport(path)) {
        importRecordings(index, {path});
        return;
    }
    const QString name = droppedFileName(QDir::toNativeSeparators(path));
    if (name.isEmpty())
        return;
    m_boxes[index]->setText(name);
    m_boxes[index]->setFocus();
    m_current = index;
    setModified();
    QString error;
    if (!StoreSentenceFile(m_context.state, m_context.msgBox, StoreMode::WorkFolder, path, error))
        m_context.msgBox.show(error, MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
    showBoxTime(index);
    showDuration(index);
}

void dlgPcCa::revealBox(int index)
{
    m_hscCaPc->setValue(m_columns->firstColumnShowing(index, m_hscCaPc->value()));
}

void dlgPcCa::showDuration(int index)
{
    // The time beside the box was found when its entry changed: no file is read again here.
    const QString time = m_columns->note(index)->text();
    m_lblPcCaDuration->setText(time.isEmpty() ? QString()
                                              : QStringLiteral("%1  %2").arg(m_boxes[index]->text(), time));
}

void dlgPcCa::cmdPcCaPlay_Click()
{
    const QString file = sentenceSoundFile(m_context.state, m_boxes[m_current]->text());
    if (file.isEmpty())
        return;
    QString error;
    if (!m_player->play(file, error))
        m_context.msgBox.show(error, MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
}

bool dlgPcCa::eventFilter(QObject *watched, QEvent *event)
{
    const int index = indexOfBox(watched);
    if (index < 0)
        return QDialog::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::FocusIn:
        m_current = index;
        revealBox(index);
        showDuration(index);
        break;
    case QEvent::DragEnter:
    case QEvent::DragMove: {
        // The box would refuse a list of files as text; files are what it takes here.
        auto *drag = static_cast<QDragMoveEvent *>(event);
        if (drag->mimeData()->hasUrls()) {
            drag->acceptProposedAction();
            return true;
        }
        break;
    }
    case QEvent::Drop: {
        auto *drop = static_cast<QDropEvent *>(event);
        const QList<QUrl> urls = drop->mimeData()->urls();
        if (!urls.isEmpty() && urls.first().isLocalFile()) {
            QStringList recordings;
            for (const QUrl &url : urls)
                if (url.isLocalFile() && isRecordingToImport(url.toLocalFile()))
                    recordings << url.toLocalFile();
            if (isRecordingToImport(urls.first().toLocalFile()))
                importRecordings(index, recordings);
            else
                TxtPcCa_OLEDragDrop(index, urls.first().toLocalFile());
            drop->acceptProposedAction();
            return true;
        }
        break;
    }
    default:
        break;
    }
    return QDialog::eventFilter(watched, event);
}

void dlgPcCa::cmdPcCaAll_Click()
{
    const QStringList listed
        = Table::inFolderListingOrder(QDir(m_context.state.SentencePath).entryList(QDir::Files, QDir::Name));
    // Kept on purpose: one below the table's size at most, 127 or 511 files, as this command always allowed.
    if (Table::countSentenceFiles(listed) >= m_table.entries()) {
        m_context.msgBox.show(tr("Sentence file number error!"));
        return;
    }
    QApplication::setOverrideCursor(Qt::WaitCursor);
    for (const Table::Placement &placement : Table::placeFolderFiles(m_context.state.SettingBuffer, listed)) {
        m_boxes[placement.index]->setText(placement.name);
        TxtPcCa_LostFocus(placement.index);
    }
    QApplication::restoreOverrideCursor();
    setModified();
}

void dlgPcCa::cmdPcCaIns_Click()
{
    SettingData &buffer = m_context.state.SettingBuffer;
    if (!Table::insertAt(buffer, m_current)) {
        m_context.msgBox.show(buffer.sentenceTable().is512() ? tr("512 step is programmed. Can not insert")
                                                             : tr("128 step is programmed. Can not insert"));
        return;
    }
    showEntries();
    showDuration(m_current);
    setModified();
}

void dlgPcCa::cmdPcCaDel_Click()
{
    Table::removeAt(m_context.state.SettingBuffer, m_current);
    showEntries();
    showDuration(m_current);
    setModified();
}

void dlgPcCa::cmdPcCaMov_Click()
{
    QStringList names;
    for (int i = 0; i <= m_table.limit(); ++i)
        names.append(m_boxes[i]->text());
    // The files of moved entries are in the work folder already: only the entries follow.
    for (const int i : Table::moveForward(names, m_table)) {
        showBox(i, names[i]);
        Table::setEntry(m_context.state.SettingBuffer, i, names[i]);
    }
    setModified();
}

void dlgPcCa::cmdsentPath_Click()
{
    frmSetPath dialog(m_context.state.SentencePath, this);
    if (dialog.exec() == QDialog::Accepted)
        m_context.state.SentencePath = withTrailingSeparator(dialog.chosenFolder());
    showPath();
}

void dlgPcCa::hscCaPc_Change(int value)
{
    m_columns->showColumn(value);
}

void dlgPcCa::cmdPcCaApp_Click()
{
    SharedState &state = m_context.state;
    state.CopyBufferToSetting(SettingSection::CardSentencesPrograms);
    const QStringList problems = storeCommittedSentences(state, m_context.msgBox);
    if (!problems.isEmpty())
        m_context.msgBox.show(
            tr("Some sentence files were not stored in %1:\n").arg(projectSentenceFolder(state))
                + problems.join(QLatin1Char('\n')),
            MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
    m_cmdPcCaApp->setEnabled(false);
}

void dlgPcCa::cmdPcCaOk_Click()
{
    cmdPcCaApp_Click();
    accept();
}

void dlgPcCa::cmdPcCaClose_Click()
{
    reject();
}

bool dlgPcCa::Form_Unload()
{
    SharedState &state = m_context.state;
    if (!state.SettingEqualsBuffer(SettingSection::CardSentencesPrograms)) {
        if (!m_context.msgBox.confirm(contentsOfEditQuestion()))
            return false;
        state.CopySettingToBuffer(SettingSection::CardSentencesPrograms);
    }
    ClearWorkFolder(state);
    return true;
}

void dlgPcCa::done(int result)
{
    if (m_closeOnce.mayClose([this] { return Form_Unload(); }))
        QDialog::done(result);
}
