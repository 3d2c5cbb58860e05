// The desktop program's recording and streamed sound: the playback plugin, loaded when the recorder
// first opens or a program first plays.

#include "audio/AudioCodecs.h"
#include "capabilities/CapabilityPlugin.h"

namespace {

SoundOutputInterface *soundSystem(QString &error)
{
    return capability<SoundOutputInterface>(Capability::SoundPlayback, error);
}

} // namespace

QList<SoundInput> soundInputs(QString &error)
{
    auto *plugin = soundSystem(error);
    return plugin ? plugin->inputs(error) : QList<SoundInput>();
}

std::unique_ptr<SoundCapture> startSoundCapture(const QByteArray &id, QString &reason)
{
    auto *plugin = soundSystem(reason);
    return std::unique_ptr<SoundCapture>(plugin ? plugin->startCapture(id, reason) : nullptr);
}

std::unique_ptr<SoundStream> openSoundStream(int sampleRate, QString &reason)
{
    auto *plugin = soundSystem(reason);
    return std::unique_ptr<SoundStream>(plugin ? plugin->openStream(sampleRate, reason) : nullptr);
}
