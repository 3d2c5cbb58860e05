#include "audio/SentencePlayer.h"

#include "audio/AudioDecode.h"
#include "audio/ProgramDuration.h"

#include <QCoreApplication>
#include <QDir>

QString sentenceSoundFile(const SharedState &state, const QString &name)
{
    return findSentenceSound(sentenceSoundFolders(state), name);
}

SentencePlayer::SentencePlayer(QObject *parent)
    : QObject(parent)
{ }

SentencePlayer::~SentencePlayer()
{
    stop();
}

bool SentencePlayer::play(const QString &path, QString &error)
{
    stop();
    DecodedAudio audio;
    QString reason;
    if (!decodeAudioFile(path, audio, reason)) {
        error = QCoreApplication::translate("SentencePlayer", "Cannot play %1: %2")
                    .arg(QDir::toNativeSeparators(path), reason);
        return false;
    }
    m_output = startOutput(audio, reason);
    if (!m_output) {
        error = QCoreApplication::translate("SentencePlayer", "Cannot play %1: %2")
                    .arg(QDir::toNativeSeparators(path), reason);
        return false;
    }
    return true;
}

void SentencePlayer::stop()
{
    m_output.reset();
}
