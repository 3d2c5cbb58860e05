// The desktop program's audio codecs: the plugin, loaded when a sentence is first played, imported
// or timed. A sentence's playing time stays unknown while the plugin is missing, as for a file
// that cannot be read.

#include "audio/AudioCodecs.h"
#include "audio/AudioInfo.h"
#include "capabilities/CapabilityPlugin.h"

namespace {

AudioCodecsInterface *codecs(QString &error)
{
    return capability<AudioCodecsInterface>(Capability::AudioCodecs, error);
}

} // namespace

bool decodeAudioFile(const QString &path, DecodedAudio &audio, QString &error,
                     const std::atomic<bool> *cancel)
{
    auto *plugin = codecs(error);
    return plugin && plugin->decodeAudioFile(path, audio, error, cancel);
}

bool importRecording(const QString &inputPath, const QString &outputPath, const ImportOptions &options,
                     ImportResult &result, QString &error)
{
    auto *plugin = codecs(error);
    return plugin && plugin->importRecording(inputPath, outputPath, options, result, error);
}

std::optional<double> mp2Duration(const QString &path)
{
    QString error;
    auto *plugin = codecs(error);
    return plugin ? plugin->mp2Duration(path) : std::nullopt;
}

bool decodeMonoAt(const QString &path, int rate, std::vector<float> &samples, QString &error)
{
    auto *plugin = codecs(error);
    return plugin && plugin->decodeMonoAt(path, rate, samples, error);
}

std::optional<MpegLength> mpegFileLength(const QString &path)
{
    QString error;
    auto *plugin = codecs(error);
    return plugin ? plugin->mpegFileLength(path) : std::nullopt;
}
