#pragma once

#include <QString>

#include <limits>
#include <vector>

/// EBU R128 measures of a recording.
struct LoudnessMeasure
{
    /// Integrated loudness in LUFS; minus infinity when every block lies under the absolute gate.
    double integratedLufs = -std::numeric_limits<double>::infinity();
    /// The highest true peak of all channels in dBTP (four times oversampled).
    double truePeakDb = -std::numeric_limits<double>::infinity();
};

/// What to measure: the true peak costs three times what the loudness alone does.
enum class PeakMeasure { TruePeak, None };

/// Measures interleaved samples; a sound shorter than the meter's 400 ms block is measured
/// repeated until it fills one. With `PeakMeasure::None` the true peak is left at minus infinity.
/// False with `error` when libebur128 refuses them.
bool measureLoudness(const std::vector<float> &samples, int channels, int sampleRate,
                     LoudnessMeasure &measure, QString &error, PeakMeasure peak = PeakMeasure::TruePeak);

/// The highest sample magnitude in dBFS (minus infinity for digital silence).
double samplePeakDb(const std::vector<float> &samples);

/// Decibels as a gain factor.
double dbToGain(double db);
