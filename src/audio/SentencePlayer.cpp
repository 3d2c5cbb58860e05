#include "audio/SentencePlayer.h"

#include "audio/AudioDecode.h"
#include "audio/ProgramDuration.h"
#include "audio/SoundDevices.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

QString sentenceSoundFile(const SharedState &state, const QString &name)
{
    return findSentenceSound(sentenceSoundFolders(state), name);
}

SentencePlayer::SentencePlayer(QObject *parent)
    : QObject(parent)
{
    // A take may be half an hour long: its samples go once it has been heard.
    connect(&m_output, &StreamPlayer::finished, this, [this] { std::vector<float>().swap(m_samples); });
}

SentencePlayer::~SentencePlayer()
{
    stop();
}

bool SentencePlayer::hasOutput()
{
    return hasSoundOutput();
}

bool SentencePlayer::play(const QString &path, QString &error)
{
    stop();
    DecodedAudio audio;
    QString reason;
    if (decodeAudioFile(path, audio, reason)) {
        m_samples = downmixToMono(audio);
        m_position = 0;
        const auto pull = [this](float *out, qint64 frames) {
            const size_t count = std::min(size_t(frames), m_samples.size() - m_position);
            std::copy_n(m_samples.data() + m_position, count, out);
            m_position += count;
            return qint64(count);
        };
        if (m_output.play(audio.sampleRate, pull, reason))
            return true;
    }
    error = QCoreApplication::translate("SentencePlayer", "Cannot play %1: %2")
                .arg(QDir::toNativeSeparators(path), reason);
    return false;
}

void SentencePlayer::stop()
{
    m_output.stop();
}
