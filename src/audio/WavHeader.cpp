#include "audio/WavHeader.h"

#include <QtEndian>

#include <cstring>

QByteArray wavHeader(int rate, WavSamples samples, qint64 frames)
{
    const bool isFloat = samples == WavSamples::Float32;
    const quint16 bytesPerSample = isFloat ? 4 : 2;
    const quint32 dataBytes = quint32(frames * bytesPerSample);
    QByteArray header(WavHeaderBytes, '\0');
    char *h = header.data();
    std::memcpy(h, "RIFF", 4);
    qToLittleEndian<quint32>(quint32(WavHeaderBytes - 8) + dataBytes, h + 4);
    std::memcpy(h + 8, "WAVEfmt ", 8);
    qToLittleEndian<quint32>(16, h + 16);
    qToLittleEndian<quint16>(isFloat ? 3 : 1, h + 20); // IEEE float or PCM
    qToLittleEndian<quint16>(1, h + 22); // mono
    qToLittleEndian<quint32>(quint32(rate), h + 24);
    qToLittleEndian<quint32>(quint32(rate) * bytesPerSample, h + 28);
    qToLittleEndian<quint16>(bytesPerSample, h + 32);
    qToLittleEndian<quint16>(quint16(bytesPerSample * 8), h + 34);
    std::memcpy(h + 36, "data", 4);
    qToLittleEndian<quint32>(dataBytes, h + 40);
    return header;
}
