// Sound playback as a plugin: the sound system this build chose, loaded when a sentence first plays.

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
};

#include "SentenceOutputPlugin.moc"
