#pragma once

#include "audio/WorkProgress.h"

#include <QByteArray>
#include <QString>

#include <vector>

/// The two sentence qualities the device plays.
enum class Mp2Quality {
    Standard, // 32 kHz, 64 kbit/s: the size the card was planned for
    High, // 44.1 kHz, 128 kbit/s
};

int mp2SampleRate(Mp2Quality quality);
int mp2BitrateKbps(Mp2Quality quality);

/// Samples per MPEG-1 Layer II frame.
constexpr int Mp2FrameSamples = 1152;

/// Encodes mono samples (at `mp2SampleRate(quality)`, full scale 1.0; louder is clipped) as MPEG-1
/// Layer II, mono. The encoder pads the last frame with silence. Empty with `error` on failure or
/// when `progress` stops it.
QByteArray encodeMp2(const std::vector<float> &mono, Mp2Quality quality, QString &error,
                     const WorkProgress &progress = {});
