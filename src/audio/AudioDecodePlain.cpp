// What of the decoding needs no codec: the players and a program's sound use it without loading
// the codecs.

#include "audio/AudioDecode.h"

#include "setting/RegularFile.h"

#include <QCoreApplication>

QString recordingPathProblem(const QString &path)
{
    switch (pathKind(path)) {
    case PathKind::Missing:
        return QCoreApplication::translate("AudioImport", "it cannot be read: there is no such file.");
    case PathKind::Folder:
        return QCoreApplication::translate("AudioImport", "it is a folder, not a file.");
    case PathKind::Other:
        return QCoreApplication::translate("AudioImport",
                                           "it is a pipe or a device, not a file: only files are read.");
    case PathKind::File:
        break;
    }
    return QString();
}

std::vector<float> downmixToMono(const DecodedAudio &audio)
{
    if (audio.channels == 1)
        return audio.samples;
    const qint64 frames = audio.frames();
    std::vector<float> mono(size_t(frames), 0.0f);
    const float scale = 1.0f / float(audio.channels);
    const float *in = audio.samples.data();
    for (qint64 i = 0; i < frames; ++i) {
        float sum = 0.0f;
        for (int c = 0; c < audio.channels; ++c)
            sum += *in++;
        mono[size_t(i)] = sum * scale;
    }
    return mono;
}
