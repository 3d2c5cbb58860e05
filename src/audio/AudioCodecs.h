#pragma once

#include "audio/AudioDecode.h"
#include "audio/AudioImport.h"
#include "audio/SoundDevices.h"

#include <QObject>

#include <optional>

/// What the audio-codec plugin offers the desktop program: the decoders (libsndfile, libmpg123),
/// the rate converter, the loudness meter and the MP2 encoder behind `decodeAudioFile`,
/// `decodeMonoAt`, `importRecording`, `mp2Duration` and `mpegFileLength`. The desktop program
/// loads it when a sentence or a program is first played, imported or timed; the command-line
/// tool and the tests have the codecs built in.
class AudioCodecsInterface
{
public:
    virtual ~AudioCodecsInterface() = default;
    virtual bool decodeAudioFile(const QString &path, DecodedAudio &audio, QString &error,
                                 const std::atomic<bool> *cancel)
        = 0;
    virtual bool importRecording(const QString &inputPath, const QString &outputPath,
                                 const ImportOptions &options, ImportResult &result, QString &error)
        = 0;
    virtual std::optional<double> mp2Duration(const QString &path) = 0;
    virtual bool decodeMonoAt(const QString &path, int rate, std::vector<float> &samples, QString &error) = 0;
    virtual std::optional<MpegLength> mpegFileLength(const QString &path) = 0;
};

#define DQ480_AUDIO_CODECS_IID "com.arvon.dq480.AudioCodecs/2"
Q_DECLARE_INTERFACE(AudioCodecsInterface, DQ480_AUDIO_CODECS_IID)

/// What the sound-playback plugin offers: sound streamed to the PC's default output, and the PC's
/// inputs recorded.
class SoundOutputInterface
{
public:
    virtual ~SoundOutputInterface() = default;
    virtual bool hasOutput() = 0;
    virtual QList<SoundInput> inputs(QString &error) = 0;
    virtual SoundCapture *startCapture(const QByteArray &id, QString &reason) = 0;
    virtual SoundStream *openStream(int sampleRate, QString &reason) = 0;
};

#define DQ480_SOUND_OUTPUT_IID "com.arvon.dq480.SoundOutput/3"
Q_DECLARE_INTERFACE(SoundOutputInterface, DQ480_SOUND_OUTPUT_IID)
