#include "setting/CardWrite.h"

#include "platform/os/OsFiles.h"
#include "setting/CardFileReplacement.h"
#include "setting/FileAttributes.h"
#include "setting/Mp2File.h"
#include "setting/MsgBox.h"
#include "setting/PathText.h"
#include "setting/SentenceFolderIndex.h"
#include "setting/SentenceFolders.h"
#include "setting/SettingFileIO.h"
#include "setting/SettingFileWriter.h"
#include "setting/SharedState.h"
#include "setting/TestTone.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStorageInfo>

#include <algorithm>
#include <cerrno>

namespace {

QString tooLarge()
{
    return QCoreApplication::translate("CardWrite",
                                       "The file being written is too large for the destination drive.");
}
const QString ToneName = QStringLiteral("SIN1KHZ.MP2");

// What the card holds free now, after the control file and the test tone took their share; the
// value the slot test recorded is the ceiling. A file system that tells no sizes leaves that value.
qint64 freeSpaceNow(const QString &cardFolder, const QString &recorded)
{
    const qint64 before = recorded.toLongLong();
    QStorageInfo storage(cardFolder);
    storage.refresh();
    if (!storage.isValid() || storage.bytesTotal() <= 0)
        return before;
    return std::min(before, storage.bytesFree());
}

bool askToReplaceReadOnly(MsgBox &msgBox, const QString &fileName)
{
    return msgBox.show(replaceReadOnlyQuestion(fileName), MsgBox::Buttons::YesNo, MsgBox::Icon::Question)
        == MsgBox::Answer::Yes;
}

void reportFailure(MsgBox &msgBox, const QString &what)
{
    msgBox.show(what, MsgBox::Buttons::Ok, MsgBox::Icon::Critical);
}

class CardWriter
{
public:
    CardWriter(SharedState &state, MsgBox &msgBox, const CardWriteHooks &hooks)
        : m_state(state)
        , m_msgBox(msgBox)
        , m_hooks(hooks)
        , m_cardFolder(joinPath(state.CardSlot, QStringLiteral("CONTENTS")))
    { }

    bool run(bool announceCompletion)
    {
        if (!m_hooks.slotTest || !m_hooks.slotTest()) {
            m_msgBox.show(QCoreApplication::translate("CardWrite", "The setting slot is not ready"));
            return false;
        }
        // A locked card refuses even the folder; it is said before anything is asked or tried.
        if (isOnReadOnlyMedium(m_state.CardSlot)) {
            m_msgBox.show(cardReadOnlyMessage());
            return false;
        }
        if (!QDir().mkpath(m_cardFolder)) {
            reportFailure(
                m_msgBox,
                QCoreApplication::translate("CardWrite", "Cannot create the folder %1 on the card: %2")
                    .arg(m_cardFolder, systemErrorText(errno)));
            return false;
        }
        if (!writeControlFile())
            return false;
        writeTestTone();
        const bool allWritten = writeSentences();
        // One sync of the folder, for all the renames above, instead of one after each file.
        syncFolder(m_cardFolder);
        if (!allWritten)
            return false;
        if (announceCompletion)
            m_msgBox.show(QCoreApplication::translate("CardWrite", "Card write is complete"));
        return true;
    }

private:
    QString onCard(const QString &name) const { return joinPath(m_cardFolder, name); }

    void skip(const QString &name) const
    {
        if (m_hooks.skipped)
            m_hooks.skipped(name);
    }

    bool writeControlFile()
    {
        const SettingData &s = m_state.Setting;
        const QString path = onCard(s.ControlFileName);
        if (QFileInfo::exists(path)) {
            if (isReadOnly(path)) {
                m_msgBox.show(cardReadOnlyMessage());
                return false;
            }
            if (!m_msgBox.confirm(QCoreApplication::translate("CardWrite", "Write over the setting data")))
                return false;
        }
        QString error;
        if (!writeFileToCard(path, WriteSettingBody(m_state), error)) {
            reportFailure(m_msgBox, error);
            return false;
        }
        // Some FAT drivers refuse the attribute; the operator must know the card is not protected.
        if ((s.CardAttribute & SettingData::AttributeWriteProtect) && !setReadOnly(path, true, &error))
            reportFailure(m_msgBox,
                          QCoreApplication::translate("CardWrite", "The card is not write-protected.\n")
                              + error);
        return true;
    }

    void writeTestTone()
    {
        const QString onCardPath = onCard(ToneName);
        if (!m_state.SurveillanceFile) {
            QFile::remove(onCardPath);
            return;
        }
        if (isReadOnly(onCardPath)) {
            if (askToReplaceReadOnly(m_msgBox, ToneName))
                setReadOnly(onCardPath, false);
            else
                skip(ToneName);
        }
        QString error;
        if (!ensureTestTone(m_state.AppPath, error)) {
            toneMissed(error);
            return;
        }
        const QString source = testTonePath(m_state.AppPath);
        if (!IsValidMp2File(source)) {
            m_msgBox.show(QCoreApplication::translate("CardWrite", "Filesystem error :") + ToneName);
            skip(ToneName);
            return;
        }
        if (!QFileInfo::exists(onCardPath)
            && QFileInfo(source).size() > freeSpaceNow(m_cardFolder, m_state.CardFreeSpace)) {
            m_msgBox.show(tooLarge());
            skip(ToneName);
            return;
        }
        // A read-only tone the operator chose to keep is left as it is, and is no error.
        if (!CopySentenceFile(source, onCardPath, error) && !error.isEmpty())
            toneMissed(error);
    }

    // The card goes on without its test tone: the operator hears of it, and the write is incomplete.
    void toneMissed(const QString &error)
    {
        reportFailure(m_msgBox,
                      QCoreApplication::translate("CardWrite", "The test tone %1 did not reach the card.\n%2")
                          .arg(ToneName, error));
        skip(ToneName);
    }

    bool writeSentences()
    {
        const SettingData &s = m_state.Setting;
        const SentenceFolderIndex sources(projectSentenceFolder(m_state));
        qint64 total = 0;
        int count = 0;
        for (int slot = 0; slot < s.sentenceTable().entries(); ++slot) {
            if (s.SentenceFileName[slot].isEmpty())
                continue;
            total += QFileInfo(sources.find(s.SentenceFileName[slot])).size();
            ++count;
        }
        const QStringList missing = missingSentenceFiles(m_state, sources);
        if (!missing.isEmpty() && m_hooks.showMissingFiles)
            m_hooks.showMissingFiles(missing);
        for (const QString &name : missing)
            skip(name);
        // Kept on purpose: equality is too large as well, as it has always been counted.
        if (freeSpaceNow(m_cardFolder, m_state.CardFreeSpace) <= total) {
            m_msgBox.show(tooLarge());
            return false;
        }

        int done = 0;
        for (int slot = 0; slot < s.sentenceTable().entries(); ++slot) {
            const QString &name = s.SentenceFileName[slot];
            if (name.isEmpty())
                continue;
            const QString destination = onCard(name);
            if (isReadOnly(destination)) {
                if (!askToReplaceReadOnly(m_msgBox, name)) {
                    skip(name);
                    continue;
                }
                setReadOnly(destination, false);
            }
            const QString source = sources.find(name);
            if (source.isEmpty())
                continue; // listed in the error list already
            if (m_hooks.progress)
                m_hooks.progress(name, done++, count);
            QFile in(source);
            const QByteArray bytes = in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray();
            if (!isAcceptedMp2Header(bytes)) {
                m_msgBox.show(QCoreApplication::translate("CardWrite", "Filesystem error :") + name);
                skip(name);
                continue;
            }
            QString error;
            if (!writeFileToCard(destination, bytes, error)) {
                reportFailure(m_msgBox,
                              QCoreApplication::translate("CardWrite", "Card write stopped at %1.\n%2")
                                  .arg(name, error));
                return false;
            }
            // A new file on the card carries no attribute: it is "normal" already.
        }
        if (m_hooks.progress && count > 0)
            m_hooks.progress(QString(), count, count);
        return true;
    }

    SharedState &m_state;
    MsgBox &m_msgBox;
    const CardWriteHooks &m_hooks;
    QString m_cardFolder;
};

} // namespace

QString cardWriteProgressText(const QString &fileName, int done, int count)
{
    if (fileName.isEmpty())
        return QStringLiteral("(%1 / %2)").arg(done).arg(count);
    return QStringLiteral("%1 (%2 / %3)").arg(fileName).arg(done + 1).arg(count);
}

QString cardReadOnlyMessage()
{
    return QCoreApplication::translate("CardWrite", "This card is read only");
}

bool cardIsReadOnly(const SharedState &state)
{
    return isOnReadOnlyMedium(state.CardSlot)
        || isReadOnly(
               joinPath(joinPath(state.CardSlot, QStringLiteral("CONTENTS")), state.Setting.ControlFileName));
}

bool CopySentenceFile(const QString &source, const QString &destination, QString &error)
{
    error.clear();
    if (isReadOnly(destination))
        return false;
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        error = QCoreApplication::translate("CardWrite", "Cannot read %1: %2").arg(source, in.errorString());
        return false;
    }
    return writeFileToCard(destination, in.readAll(), error);
}

bool WriteCard(SharedState &state, MsgBox &msgBox, const CardWriteHooks &hooks, bool announceCompletion)
{
    return CardWriter(state, msgBox, hooks).run(announceCompletion);
}
