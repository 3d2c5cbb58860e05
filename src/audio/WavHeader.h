#pragma once

#include <QByteArray>

/// How a WAV file's samples are stored.
enum class WavSamples {
    Pcm16, // 16-bit integers
    Float32, // 32-bit IEEE floats
};

constexpr qint64 WavHeaderBytes = 44;

/// The header of a mono WAV file at `rate` whose data holds `frames` samples.
QByteArray wavHeader(int rate, WavSamples samples, qint64 frames);
