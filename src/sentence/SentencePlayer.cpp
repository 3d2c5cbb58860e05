#include "SentencePlayer.h"

#include "AudioDecode.h"
#include "ProgramDuration.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QDir>
#include <QMediaDevices>

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

bool SentencePlayer::hasOutput()
{
    return !QMediaDevices::audioOutputs().isEmpty();
}

bool SentencePlayer::play(const QString &path, QString &error)
{
    stop();
    DecodedAudio audio;
    QString reason;
    if (!decodeAudioFile(path, audio, reason)) {
        error = QStringLiteral("Cannot play %1: %2").arg(QDir::toNativeSeparators(path), reason);
        return false;
    }
    QAudioFormat format;
    format.setSampleRate(audio.sampleRate);
    format.setChannelCount(audio.channels);
    format.setSampleFormat(QAudioFormat::Float);
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull() || !device.isFormatSupported(format)) {
        error = QStringLiteral("Cannot play %1: the PC's audio output does not take %2 Hz.")
                    .arg(QDir::toNativeSeparators(path))
                    .arg(audio.sampleRate);
        return false;
    }
    m_buffer.setData(reinterpret_cast<const char *>(audio.samples.data()),
                     qsizetype(audio.samples.size() * sizeof(float)));
    m_buffer.open(QIODevice::ReadOnly);
    m_sink = std::make_unique<QAudioSink>(device, format);
    m_sink->start(&m_buffer);
    return true;
}

void SentencePlayer::stop()
{
    if (m_sink)
        m_sink->stop();
    m_sink.reset();
    m_buffer.close();
}
