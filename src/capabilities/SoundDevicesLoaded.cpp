// The desktop program's sound: the playback plugin, loaded when a sentence or a program first plays
// or the recorder first opens.

#include "audio/AudioCodecs.h"
#include "capabilities/CapabilityPlugin.h"

namespace {

SoundOutputInterface *soundSystem(QString &error)
{
    return capability<SoundOutputInterface>(Capability::SoundPlayback, error);
}

} // namespace

bool hasSoundOutput()
{
    QString error;
    auto *plugin = soundSystem(error);
    // Without the plugin the Play buttons stay, so that pressing one says what is not installed.
    return !plugin || plugin->hasOutput();
}

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
