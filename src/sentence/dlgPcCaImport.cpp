// The sentence table's import of recordings: dropped, chosen with "Import..." or recorded with
// "Record...", made into sentences in the work folder and entered from a box on.
#include "sentence/dlgPcCa.h"

#include "audio/SentenceName.h"
#include "sentence/RecordingImport.h"
#include "sentence/SentenceTableEdit.h"
#include "sentence/dlgRecorder.h"
#include "sentence/dlgSentenceNames.h"
#include "setting/FileCopy.h"
#include "setting/MsgBox.h"
#include "setting/SentenceFolders.h"
#include "setting/SharedState.h"
#include "widgets/FileDialogs.h"
#include "widgets/QtMsgBox.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QLineEdit>
#include <QTemporaryDir>

#include <algorithm>

namespace Table = SentenceTableEdit;

namespace {

QString entryNumber(int index)
{
    return QStringLiteral("%1").arg(index + 1, 3, 10, QLatin1Char('0'));
}

// The folder the sentences are made in before they are entered; says why when there is none.
bool madeAside(const QTemporaryDir &made, MsgBox &msgBox)
{
    if (made.isValid())
        return true;
    msgBox.show(QCoreApplication::translate("FileReplacement", "Cannot write %1: %2")
                    .arg(QDir::tempPath(), made.errorString()),
                MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
    return false;
}

} // namespace

bool dlgPcCa::confirmImport(const QStringList &refused, const QStringList &replaced,
                            const QStringList &leftOut)
{
    if (replaced.isEmpty() && leftOut.isEmpty())
        return true;
    QStringList text = refused;
    if (!replaced.isEmpty())
        text << tr("The recordings replace these entries:") << replaced;
    if (!leftOut.isEmpty())
        text << tr("The table ends at entry %1; these recordings are left out:")
                    .arg(entryNumber(m_context.state.SettingBuffer.sentenceTable().lastEntry()))
             << leftOut;
    text << tr("Import the recordings?");
    return m_context.msgBox.confirm(text.join(QLatin1Char('\n')));
}

QStringList dlgPcCa::namesKeptOutside(int first, int last) const
{
    const SettingData &buffer = m_context.state.SettingBuffer;
    QStringList kept;
    for (int i = 0; i < SentenceTableSize::Largest; ++i)
        if ((i < first || i > last) && !buffer.SentenceFileName[i].isEmpty())
            kept << buffer.SentenceFileName[i];
    return kept;
}

void dlgPcCa::importRecordings(int index, const QStringList &paths)
{
    SettingData &buffer = m_context.state.SettingBuffer;
    const int count = std::clamp(buffer.sentenceTable().entries() - index, 0, int(paths.size()));
    if (count == 0) {
        m_context.msgBox.show(
            tr("The table has no entry from %1 on: nothing was imported.").arg(entryNumber(index)),
            MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
        return;
    }
    // Names the table holds elsewhere stay; the boxes being filled give theirs up. Recordings named
    // fittingly keep their names; the others are offered one.
    QStringList kept = namesKeptOutside(index, index + count - 1);
    // The sentences are made aside and enter the work folder only once the operator has seen
    // which entries they replace, which is known only when every recording has been made.
    const QTemporaryDir made;
    if (!madeAside(made, m_context.msgBox))
        return;
    std::vector<RecordingJob> jobs;
    std::vector<dlgSentenceNames::Offer> offers;
    std::vector<size_t> offered;
    for (int k = 0; k < count; ++k) {
        const QString &path = paths[k];
        QString name = sentenceFileNameForRecording(path);
        QStringList taken = kept;
        for (const dlgSentenceNames::Offer &offer : offers)
            taken << offer.name;
        if (isFittingSentenceName(QFileInfo(path).completeBaseName())
            && !taken.contains(name, Qt::CaseInsensitive)) {
            kept << name;
        } else {
            name = proposeSentenceName(path, taken);
            offers.push_back({path, name});
            offered.push_back(jobs.size());
        }
        jobs.push_back({path, made.filePath(name), QString()});
    }
    if (!offers.empty()) {
        dlgSentenceNames names(offers, kept, m_context.msgBox, this);
        if (names.exec() != QDialog::Accepted)
            return;
        const QStringList chosen = names.chosenNames();
        for (size_t k = 0; k < offered.size(); ++k)
            jobs[offered[k]].output = made.filePath(chosen[qsizetype(k)]);
    }
    QStringList leftOut;
    for (qsizetype k = count; k < paths.size(); ++k)
        leftOut << QFileInfo(paths[k]).fileName();
    enterImports(index, jobs, leftOut, false);
}

bool dlgPcCa::enterTake(int index, const QString &take, const QString &name)
{
    const QTemporaryDir made;
    if (!madeAside(made, m_context.msgBox))
        return false;
    std::vector<RecordingJob> jobs {{take, made.filePath(name), QString()}};
    // A take starts before the operator speaks and ends after: its silent ends are cut.
    return enterImports(index, jobs, {}, true);
}

bool dlgPcCa::enterImports(int index, std::vector<RecordingJob> &jobs, const QStringList &leftOut,
                           bool trimSilence)
{
    SettingData &buffer = m_context.state.SettingBuffer;
    const int count = int(jobs.size());
    // Above the window in front: a take is made into a sentence while the recorder is still open.
    if (!runRecordingImports(jobs, frontWindow(this), trimSilence))
        return false;

    // Each recording goes to its own entry, so that the sentence numbers the programs play mean
    // what was dropped; a refused recording leaves its entry as it was, and with it the sentence of
    // that name, which no other recording may then replace.
    QStringList refused;
    std::vector<int> staying;
    for (int k = 0; k < count; ++k)
        if (!jobs[size_t(k)].error.isEmpty()) {
            refused << jobs[size_t(k)].error;
            staying.push_back(index + k);
        }
    std::vector<int> entering;
    QStringList replaced;
    for (int k = 0; k < count; ++k) {
        const RecordingJob &job = jobs[size_t(k)];
        if (!job.error.isEmpty())
            continue;
        const QString name = QFileInfo(job.output).fileName();
        const auto keeper = std::find_if(staying.begin(), staying.end(), [&](int entry) {
            return buffer.SentenceFileName[entry].compare(name, Qt::CaseInsensitive) == 0;
        });
        if (keeper != staying.end()) {
            refused << tr("Cannot enter %1 as entry %2: entry %3 stays as it was and holds a sentence of "
                          "that name.")
                           .arg(name, entryNumber(index + k), entryNumber(*keeper));
            continue;
        }
        entering.push_back(k);
        if (!buffer.SentenceFileName[index + k].isEmpty())
            replaced << entryNumber(index + k) + QStringLiteral(": ") + buffer.SentenceFileName[index + k];
    }
    if (entering.empty() || !confirmImport(refused, replaced, leftOut)) {
        if (entering.empty() && !refused.isEmpty())
            m_context.msgBox.show(refused.join(QLatin1Char('\n')), MsgBox::Buttons::Ok,
                                  MsgBox::Icon::Exclamation);
        return false;
    }
    const bool asked = !replaced.isEmpty() || !leftOut.isEmpty();
    QStringList errors = asked ? QStringList() : refused;
    const QString folder = workFolder(m_context.state);
    QDir().mkpath(folder);
    bool entered = false;
    for (const int k : entering) {
        const QString name = QFileInfo(jobs[size_t(k)].output).fileName();
        QString error;
        if (!copyFileReplacing(jobs[size_t(k)].output, folder + name, error)) {
            errors << error;
            continue;
        }
        Table::setEntry(buffer, index + k, name);
        showBox(index + k, buffer.SentenceFileName[index + k]);
        entered = true;
    }
    setModified();
    m_current = index;
    revealBox(index);
    m_boxes[index]->setFocus();
    showDuration(index);
    if (!errors.isEmpty())
        m_context.msgBox.show(errors.join(QLatin1Char('\n')), MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
    return entered;
}

void dlgPcCa::cmdPcCaImport_Click()
{
    const QStringList chosen = m_context.fileDialogs.openFileNames(
        this, tr("Import recordings"), tr("Recordings (%1)").arg(recordingNamePatterns()));
    QStringList recordings;
    for (const QString &path : chosen)
        if (isRecordingToImport(path)
            || QFileInfo(path).suffix().compare(QLatin1String("mp2"), Qt::CaseInsensitive) == 0)
            recordings << QDir::fromNativeSeparators(path);
    if (!recordings.isEmpty())
        importRecordings(m_current, recordings);
}

void dlgPcCa::cmdPcCaRecord_Click()
{
    const int index = m_current;
    dlgRecorder recorder(
        m_context, index, namesKeptOutside(index, index), takeFilePath(m_context.state),
        [this, index](const QString &take, const QString &name) { return enterTake(index, take, name); },
        this);
    recorder.exec();
}
