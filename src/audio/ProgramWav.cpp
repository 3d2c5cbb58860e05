#include "audio/ProgramWav.h"

#include "audio/ProgramSound.h"
#include "audio/WavHeader.h"
#include "setting/FileReplacement.h"
#include "setting/PcFileReplacement.h"

#include <QCoreApplication>
#include <QDir>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <vector>

namespace {

qint16 toPcm16(float sample)
{
    const float scaled = std::nearbyint(std::clamp(sample, -1.0f, 1.0f) * 32767.0f);
    return qint16(scaled);
}

} // namespace

bool writeProgramWav(ProgramSound &sound, const QString &path, QString &error)
{
    const qint64 frames = sound.totalFrames();
    const QString shown = QDir::toNativeSeparators(path);
    if (frames < 0) {
        error = QCoreApplication::translate("ProgramSound",
                                            "Cannot write %1: the program plays until stopped; say how "
                                            "many passes to write.")
                    .arg(shown);
        return false;
    }
    if (frames * 2 > qint64(0xFFFFFFFF) - WavHeaderBytes) {
        error = QCoreApplication::translate("ProgramSound",
                                            "Cannot write %1: the sound is longer than a WAV file can hold.")
                    .arg(shown);
        return false;
    }
    PcFileReplacement file(path);
    if (!file.open(error) || !file.write(wavHeader(sound.sampleRate(), WavSamples::Pcm16, frames), error))
        return false;
    std::vector<float> block(65536);
    QByteArray bytes;
    // The header promised `frames`: no more may follow it, and fewer would leave it lying.
    for (qint64 left = frames; left > 0;) {
        const qint64 got = sound.read(block.data(), std::min(left, qint64(block.size())));
        if (got == 0) {
            error = QCoreApplication::translate("ProgramSound", "Cannot write %1: the sound ended early.")
                        .arg(shown);
            return false;
        }
        left -= got;
        bytes.resize(got * 2);
        for (qint64 i = 0; i < got; ++i)
            qToLittleEndian(toPcm16(block[size_t(i)]), bytes.data() + 2 * i);
        if (!file.write(bytes, error))
            return false;
    }
    return file.commit(error);
}
