#pragma once

#include <vector>

/// How the limiter turns the gain down before a peak and back up after it.
struct PeakLimiterTiming
{
    /// The gain starts to fall this long before a peak and is fully down at the peak.
    double lookAheadSeconds = 0.005;
    /// The gain comes back up with this time constant once the peak has passed.
    double releaseSeconds = 0.060;
};

/// A look-ahead true-peak limiter for one mono sound: it scales the sound by a gain and lowers
/// that gain only around the places where the wave, between the samples too, would pass a
/// ceiling. The gain falls smoothly over the look-ahead so that it is in place at the peak, stays
/// down while peaks follow each other closely and recovers slowly, so speech does not pump; quiet
/// passages keep the plain gain. The wave between the samples is estimated once, four times
/// oversampled, so trying several gains costs little.
class PeakLimiter
{
public:
    /// Keeps a reference to `samples`: they must outlive the limiter.
    PeakLimiter(const std::vector<float> &samples, int sampleRate, const PeakLimiterTiming &timing = {});

    /// Puts into `out` the samples times `gain` (a factor), limited to `ceiling` (full scale 1.0).
    /// Returns the deepest reduction as a factor: 1.0 when nothing passed the ceiling.
    float apply(float gain, float ceiling, std::vector<float> &out);

private:
    void estimatePeaks();

    const std::vector<float> &m_samples;
    int m_rate;
    PeakLimiterTiming m_timing;
    float m_samplePeak = 0.0f;
    // Per sample, the highest magnitude of the wave from the sample before to the sample after;
    // empty until a gain brings the sound near a ceiling.
    std::vector<float> m_peaks;
};
