// The audio codecs as a plugin: libsndfile, libmpg123, libsamplerate, libebur128 and libtwolame,
// loaded when a sentence is first played, imported or timed.

#include "audio/AudioCodecs.h"
#include "audio/AudioInfo.h"

class AudioCodecsPlugin : public QObject, public AudioCodecsInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID DQ480_AUDIO_CODECS_IID)
    Q_INTERFACES(AudioCodecsInterface)

public:
    bool decodeAudioFile(const QString &path, DecodedAudio &audio, QString &error,
                         const std::atomic<bool> *cancel) override
    {
        return ::decodeAudioFile(path, audio, error, cancel);
    }
    bool importRecording(const QString &inputPath, const QString &outputPath, const ImportOptions &options,
                         ImportResult &result, QString &error) override
    {
        return ::importRecording(inputPath, outputPath, options, result, error);
    }
    std::optional<double> mp2Duration(const QString &path) override { return ::mp2Duration(path); }
    bool decodeMonoAt(const QString &path, int rate, std::vector<float> &samples, QString &error) override
    {
        return ::decodeMonoAt(path, rate, samples, error);
    }
    std::optional<MpegLength> mpegFileLength(const QString &path) override { return ::mpegFileLength(path); }
};

#include "AudioCodecsPlugin.moc"
