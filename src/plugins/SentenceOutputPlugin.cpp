// Sound playback and recording as a plugin: the sound system this build chose, loaded when a
// sentence or a program first plays or the recorder opens.

#include "audio/AudioCodecs.h"
#include "audio/SentencePlayer.h"

class SentenceOutputPlugin : public QObject, public SoundOutputInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DQ480_SOUND_OUTPUT_IID)
    Q_INTERFACES(SoundOutputInterface)

    struct BackendPlaying : Playing
    {
        explicit BackendPlaying(SentencePlayer::OutputHandle output)
            : output(std::move(output))
        { }
        SentencePlayer::OutputHandle output;
    };

public:
    bool hasOutput() override { return SentencePlayer::hasOutput(); }

    Playing *start(const DecodedAudio &audio, QString &reason) override
    {
        SentencePlayer::OutputHandle output = SentencePlayer::startOutput(audio, reason);
        return output ? new BackendPlaying(std::move(output)) : nullptr;
    }

    QList<SoundInput> inputs(QString &error) override { return soundInputs(error); }

    SoundCapture *startCapture(const QByteArray &id, QString &reason) override
    {
        return startSoundCapture(id, reason).release();
    }

    SoundStream *openStream(int sampleRate, QString &reason) override
    {
        return openSoundStream(sampleRate, reason).release();
    }
};

#include "SentenceOutputPlugin.moc"
