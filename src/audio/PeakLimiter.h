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

/// Scales `samples` down where their magnitude would pass `ceiling` (full scale 1.0) and leaves
/// everything else as it is. The gain falls smoothly over the look-ahead so that it is in place
/// at the peak, stays down while peaks follow each other closely and recovers slowly, so speech
/// does not pump. Returns the deepest reduction as a gain factor (1.0 when nothing passed).
float limitPeaks(std::vector<float> &samples, int sampleRate, float ceiling,
                 const PeakLimiterTiming &timing = PeakLimiterTiming());
