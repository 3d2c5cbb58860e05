#include "setting/Mp2File.h"

#include "setting/RegularFile.h"

#include <QFile>

bool isAcceptedMp2Header(QByteArrayView firstBytes)
{
    if (firstBytes.size() < 4)
        return false;
    const auto byte = [&](int i) {
        return static_cast<quint8>(firstBytes[i]);
    };
    const quint8 bitrate = byte(2) & 0xF0;
    const quint8 sampleRate = byte(2) & 0x0C;
    return byte(0) == 0xFF && (byte(1) & 0xFC) == 0xFC
        && (bitrate == 0x40 || bitrate == 0x60 || bitrate == 0x80 || bitrate == 0xA0)
        && (sampleRate == 0x08 || sampleRate == 0x00) && (byte(3) & 0xC0) == 0xC0;
}

bool IsValidMp2File(const QString &path)
{
    // A pipe named like a sentence would hold the program waiting for a writer.
    if (pathKind(path) != PathKind::File)
        return false;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) && isAcceptedMp2Header(file.read(4));
}
