// The desktop program's sound output: the playback plugin (Qt Multimedia or PortAudio, whichever
// the build chose), loaded when a sentence first plays.

#include "audio/AudioCodecs.h"
#include "audio/SentencePlayer.h"
#include "capabilities/CapabilityPlugin.h"

struct SentencePlayer::Output
{
    std::unique_ptr<SoundOutputInterface::Playing> playing;
};

void SentencePlayer::OutputEnd::operator()(Output *output) const
{
    delete output;
}

bool SentencePlayer::hasOutput()
{
    QString error;
    auto *output = capability<SoundOutputInterface>(Capability::SoundPlayback, error);
    // Without the plugin the Play button stays, so that pressing it says what is not installed.
    return !output || output->hasOutput();
}

SentencePlayer::OutputHandle SentencePlayer::startOutput(const DecodedAudio &audio, QString &reason)
{
    auto *output = capability<SoundOutputInterface>(Capability::SoundPlayback, reason);
    if (!output)
        return nullptr;
    std::unique_ptr<SoundOutputInterface::Playing> playing(output->start(audio, reason));
    if (!playing)
        return nullptr;
    return OutputHandle(new Output {std::move(playing)});
}
