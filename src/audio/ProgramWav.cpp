#include "audio/ProgramWav.h"

#include "audio/ProgramSound.h"
#include "setting/FileReplacement.h"
#include "setting/PcFileReplacement.h"

#include <QCoreApplication>
#include <QDir>
#include <QtEndian>

#include <algorithm>
#include <cmath>
#include <cstring>
#include <vector>

namespace {

constexpr int HeaderBytes = 44;

void putLe32(char *at, quint32 value)
{
    qToLittleEndian(value, at);
}

void putLe16(char *at, quint16 value)
{
    qToLittleEndian(value, at);
}

QByteArray wavHeader(int rate, qint64 frames)
{
    const quint32 dataBytes = quint32(frames * 2);
    QByteArray header(HeaderBytes, '\0');
    char *h = header.data();
    memcpy(h, "RIFF", 4);
    putLe32(h + 4, 36 + dataBytes);
    memcpy(h + 8, "WAVEfmt ", 8);
    putLe32(h + 16, 16);
    putLe16(h + 20, 1); // PCM
    putLe16(h + 22, 1); // mono
    putLe32(h + 24, quint32(rate));
    putLe32(h + 28, quint32(rate) * 2);
    putLe16(h + 32, 2);
    putLe16(h + 34, 16);
    memcpy(h + 36, "data", 4);
    putLe32(h + 40, dataBytes);
    return header;
}

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
    if (frames * 2 > qint64(0xFFFFFFFF) - HeaderBytes) {
        error = QCoreApplication::translate("ProgramSound",
                                            "Cannot write %1: the sound is longer than a WAV file can hold.")
                    .arg(shown);
        return false;
    }
    PcFileReplacement file(path);
    if (!file.open(error) || !file.write(wavHeader(sound.sampleRate(), frames), error))
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
