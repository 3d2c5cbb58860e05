#pragma once

#include <QString>

#include <vector>

/// The gain a sound got on its way to a target loudness.
struct LevelledGain
{
    /// The gain before the limiter, in dB.
    double gainDb = 0.0;
    /// The integrated loudness after gain and limiter, in LUFS.
    double loudnessLufs = 0.0;
};

/// Puts into `out` mono `samples` (measured at `measuredLufs`) brought to `targetLufs`, their
/// true peaks held at or under `peakLimitDb` (dB of full scale) by the peak limiter. Limiting takes a little
/// loudness away, so the gain is raised by what is missing and the sound limited again from the
/// start, a few rounds at most, until it lands within a tenth of a LU of the target; a sound
/// whose peaks stay under the limit is only scaled. False with `error` when the meter fails.
bool levelToTarget(const std::vector<float> &samples, int sampleRate, double measuredLufs, double targetLufs,
                   double peakLimitDb, std::vector<float> &out, LevelledGain &levelled, QString &error);
