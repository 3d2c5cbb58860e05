// Sound playback and recording as a plugin: the sound system this build chose, loaded when a
// sentence or a program first plays or the recorder opens.

#include "audio/AudioCodecs.h"
#include "audio/SoundDevices.h"

class SoundOutputPlugin : public QObject, public SoundOutputInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DQ480_SOUND_OUTPUT_IID)
    Q_INTERFACES(SoundOutputInterface)

public:
    bool hasOutput() override { return hasSoundOutput(); }

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

#include "SoundOutputPlugin.moc"
