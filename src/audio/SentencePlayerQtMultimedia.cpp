// Sentence playback through Qt Multimedia.

#include "audio/SentencePlayer.h"

#include "audio/AudioDecode.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QBuffer>
#include <QCoreApplication>
#include <QMediaDevices>

struct SentencePlayer::Output
{
    QBuffer buffer;
    std::unique_ptr<QAudioSink> sink;
};

void SentencePlayer::OutputEnd::operator()(Output *output) const
{
    output->sink->stop();
    delete output;
}

bool SentencePlayer::hasOutput()
{
    return !QMediaDevices::audioOutputs().isEmpty();
}

SentencePlayer::OutputHandle SentencePlayer::startOutput(const DecodedAudio &audio, QString &reason)
{
    QAudioFormat format;
    format.setSampleRate(audio.sampleRate);
    format.setChannelCount(audio.channels);
    format.setSampleFormat(QAudioFormat::Float);
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    if (device.isNull()) {
        reason = QCoreApplication::translate("SentencePlayer", "this PC has no audio output.");
        return nullptr;
    }
    if (!device.isFormatSupported(format)) {
        reason = QCoreApplication::translate("SentencePlayer", "the PC's audio output does not take %1 Hz.")
                     .arg(audio.sampleRate);
        return nullptr;
    }
    OutputHandle output(new Output);
    output->buffer.setData(reinterpret_cast<const char *>(audio.samples.data()),
                           qsizetype(audio.samples.size() * sizeof(float)));
    output->buffer.open(QIODevice::ReadOnly);
    output->sink = std::make_unique<QAudioSink>(device, format);
    output->sink->start(&output->buffer);
    return output;
}
