#include "CardWrite.h"

#include "FileAttributes.h"
#include "Mp2File.h"
#include "MsgBox.h"
#include "PathText.h"
#include "SentenceFolderIndex.h"
#include "SentenceFolders.h"
#include "SettingFileIO.h"
#include "SettingFileWriter.h"
#include "SharedState.h"
#include "TestTone.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#ifdef Q_OS_UNIX
#include <fcntl.h>
#include <unistd.h>
#endif

namespace {

const QString TooLarge = QStringLiteral("The file being written is too large for the destination drive.");
const QString ToneName = QStringLiteral("SIN1KHZ.MP2");

// A folder's entries reach the card only when the folder itself is synced.
void syncFolder(const QString &folder)
{
#ifdef Q_OS_UNIX
    const int fd = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (fd >= 0) {
        ::fsync(fd);
        ::close(fd);
    }
#else
    Q_UNUSED(folder);
#endif
}

void syncFile(QFile &file)
{
    file.flush();
#ifdef Q_OS_UNIX
    ::fsync(file.handle());
#endif
}

// A sentence file is small: it is read once, checked, written beside its place on the card,
// synced, renamed into place and read back, so a card that takes the write but keeps wrong
// bytes is caught. The old copy stays until the new one is complete.
bool writeVerified(const QByteArray &bytes, const QString &destination, QString &error)
{
    const QString temporary = destination + QStringLiteral(".TMP");
    QFile out(temporary);
    if (!out.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered)
        || out.write(bytes) != bytes.size()) {
        error = QStringLiteral("Cannot write %1: %2").arg(destination, out.errorString());
        out.close();
        QFile::remove(temporary);
        return false;
    }
    syncFile(out);
    out.close();
#ifdef Q_OS_UNIX
    const bool renamed
        = ::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(destination).constData()) == 0;
#else
    const bool renamed = (!QFile::exists(destination) || QFile::remove(destination))
        && QFile::rename(temporary, destination);
#endif
    if (!renamed) {
        error = QStringLiteral("Cannot write %1: the file could not be put in place.").arg(destination);
        QFile::remove(temporary);
        return false;
    }
    QFile back(destination);
    if (!back.open(QIODevice::ReadOnly) || back.readAll() != bytes) {
        error = QStringLiteral("%1 on the card differs from the file written.").arg(destination);
        return false;
    }
    return true;
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
            m_msgBox.show(QStringLiteral("The setting slot is not ready"));
            return false;
        }
        if (!QDir().mkpath(m_cardFolder)) {
            reportFailure(m_msgBox,
                          QStringLiteral("Cannot create the folder %1 on the card.").arg(m_cardFolder));
            return false;
        }
        if (!writeControlFile())
            return false;
        writeTestTone();
        if (!writeSentences())
            return false;
        syncFolder(m_cardFolder);
        if (announceCompletion)
            m_msgBox.show(QStringLiteral("Card write is complete"));
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
                m_msgBox.show(QStringLiteral("This card is read only"));
                return false;
            }
            if (!m_msgBox.confirm(QStringLiteral("Write over the setting data")))
                return false;
        }
        QString error;
        if (!writeFileAtomically(path, WriteSettingBody(m_state), error)) {
            reportFailure(m_msgBox, error);
            return false;
        }
        if (s.CardAttribute & SettingData::AttributeWriteProtect)
            setReadOnly(path, true);
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
            reportFailure(m_msgBox, error);
            return;
        }
        const QString source = testTonePath(m_state.AppPath);
        if (!IsValidMp2File(source)) {
            m_msgBox.show(QStringLiteral("Filesystem error :") + ToneName);
            skip(ToneName);
            return;
        }
        if (!QFileInfo::exists(onCardPath) && QFileInfo(source).size() > m_state.CardFreeSpace.toLongLong()) {
            m_msgBox.show(TooLarge);
            skip(ToneName);
            return;
        }
        // A read-only tone the operator chose to keep is left as it is, and is no error.
        if (!CopySentenceFile(source, onCardPath, error) && !error.isEmpty())
            reportFailure(m_msgBox, error);
    }

    bool writeSentences()
    {
        const SettingData &s = m_state.Setting;
        const SentenceFolderIndex sources(projectSentenceFolder(m_state));
        qint64 total = 0;
        int count = 0;
        for (int slot = 0; slot < s.sentenceCapacity(); ++slot) {
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
        // Equality is too large as well, as it has always been counted.
        if (m_state.CardFreeSpace.toLongLong() <= total) {
            m_msgBox.show(TooLarge);
            return false;
        }

        int done = 0;
        for (int slot = 0; slot < s.sentenceCapacity(); ++slot) {
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
                m_msgBox.show(QStringLiteral("Filesystem error :") + name);
                skip(name);
                continue;
            }
            QString error;
            if (!writeVerified(bytes, destination, error)) {
                reportFailure(m_msgBox, QStringLiteral("Card write stopped at %1.\n%2").arg(name, error));
                return false;
            }
            // A new file on the card carries no attribute: it is "normal" already.
        }
        if (m_hooks.progress)
            m_hooks.progress(QString(), count, count);
        return true;
    }

    SharedState &m_state;
    MsgBox &m_msgBox;
    const CardWriteHooks &m_hooks;
    QString m_cardFolder;
};

} // namespace

bool CopySentenceFile(const QString &source, const QString &destination, QString &error)
{
    error.clear();
    if (isReadOnly(destination))
        return false;
    QFile in(source);
    if (!in.open(QIODevice::ReadOnly)) {
        error = QStringLiteral("Cannot read %1: %2").arg(source, in.errorString());
        return false;
    }
    return writeVerified(in.readAll(), destination, error);
}

bool WriteCard(SharedState &state, MsgBox &msgBox, const CardWriteHooks &hooks, bool announceCompletion)
{
    return CardWriter(state, msgBox, hooks).run(announceCompletion);
}
