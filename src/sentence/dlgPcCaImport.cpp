// The sentence table's import of recordings: dropped or chosen with "Import...", made into
// sentences in the work folder and entered from a box on.
#include "dlgPcCa.h"

#include "FileDialogs.h"
#include "MsgBox.h"
#include "RecordingImport.h"
#include "SentenceFolders.h"
#include "SentenceName.h"
#include "SentenceTableEdit.h"
#include "SharedState.h"
#include "dlgSentenceNames.h"

#include <QDir>
#include <QFileInfo>
#include <QLineEdit>

#include <algorithm>

namespace Table = SentenceTableEdit;

bool dlgPcCa::confirmImportInto(int index, const QStringList &paths, int count)
{
    const SettingData &buffer = m_context.state.SettingBuffer;
    QStringList replaced;
    for (int i = index; i < index + count; ++i)
        if (!buffer.SentenceFileName[i].isEmpty())
            replaced << QStringLiteral("%1: %2")
                            .arg(i + 1, 3, 10, QLatin1Char('0'))
                            .arg(buffer.SentenceFileName[i]);
    QStringList leftOut;
    for (qsizetype k = count; k < paths.size(); ++k)
        leftOut << QFileInfo(paths[k]).fileName();
    if (count == 0) {
        m_context.msgBox.show(tr("The table has no entry from %1 on: nothing was imported.")
                                  .arg(index + 1, 3, 10, QLatin1Char('0')),
                              MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
        return false;
    }
    if (replaced.isEmpty() && leftOut.isEmpty())
        return true;
    QStringList text;
    if (!replaced.isEmpty())
        text << tr("The recordings replace these entries:") << replaced;
    if (!leftOut.isEmpty())
        text << tr("The table ends at entry %1; these recordings are left out:")
                    .arg(Table::lastEntry(buffer) + 1, 3, 10, QLatin1Char('0'))
             << leftOut;
    text << tr("Import the recordings?");
    return m_context.msgBox.confirm(text.join(QLatin1Char('\n')));
}

void dlgPcCa::importRecordings(int index, const QStringList &paths)
{
    SettingData &buffer = m_context.state.SettingBuffer;
    const int count = std::clamp(Table::lastEntry(buffer) + 1 - index, 0, int(paths.size()));
    if (!confirmImportInto(index, paths, count))
        return;
    // Names the table holds elsewhere stay; the boxes being filled give theirs up. Recordings named
    // fittingly keep their names; the others are offered one.
    QStringList kept;
    for (int i = 0; i < Entries; ++i)
        if ((i < index || i >= index + count) && !buffer.SentenceFileName[i].isEmpty())
            kept << buffer.SentenceFileName[i];
    const QString folder = workFolder(m_context.state);
    QDir().mkpath(folder);
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
        jobs.push_back({path, folder + name, QString()});
    }
    if (!offers.empty()) {
        dlgSentenceNames names(offers, kept, m_context.msgBox, this);
        if (names.exec() != QDialog::Accepted)
            return;
        const QStringList chosen = names.chosenNames();
        for (size_t k = 0; k < offered.size(); ++k)
            jobs[offered[k]].output = folder + chosen[qsizetype(k)];
    }
    const bool completed = runRecordingImports(jobs, this);
    // The sentences made fill the boxes one after the other; a refused recording leaves no gap.
    QStringList errors;
    int box = index;
    for (const RecordingJob &job : jobs) {
        if (!job.error.isEmpty()) {
            errors << job.error;
            continue;
        }
        Table::setEntry(buffer, box, QFileInfo(job.output).fileName());
        showBox(box, buffer.SentenceFileName[box]);
        ++box;
    }
    setModified();
    m_current = index;
    revealBox(index);
    m_boxes[index]->setFocus();
    showDuration(index);
    if (!errors.isEmpty() && completed)
        m_context.msgBox.show(errors.join(QLatin1Char('\n')), MsgBox::Buttons::Ok, MsgBox::Icon::Exclamation);
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
