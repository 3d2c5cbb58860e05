#include "PeakLimiter.h"

#include <QtGlobal>

#include <algorithm>
#include <cmath>
#include <deque>

namespace {

// The gain each sample needs on its own to stay at or under the ceiling. The wave also rises
// between samples: the midpoints, by four-point interpolation, count for both their neighbours,
// so that a burst near the top of the band is caught before the true-peak meter finds it.
std::vector<float> requiredGains(const std::vector<float> &samples, float ceiling)
{
    const size_t n = samples.size();
    const auto at = [&](size_t i, int offset) {
        const auto j = qsizetype(i) + offset;
        return j >= 0 && j < qsizetype(n) ? samples[size_t(j)] : 0.0f;
    };
    std::vector<float> gains(n, 1.0f);
    float before = 0.0f; // the midpoint before the sample
    for (size_t i = 0; i < n; ++i) {
        const float after = std::fabs((9.0f * (at(i, 0) + at(i, 1)) - at(i, -1) - at(i, 2)) / 16.0f);
        const float magnitude = std::max({std::fabs(samples[i]), before, after});
        if (magnitude > ceiling)
            gains[i] = ceiling / magnitude;
        before = after;
    }
    return gains;
}

// The smallest of `gains[i .. i + window - 1]` for every i, with a queue of the candidates still
// ahead, in one pass from the end.
std::vector<float> lookAheadMinimum(const std::vector<float> &gains, size_t window)
{
    std::vector<float> minima(gains.size());
    std::deque<size_t> candidates; // indices with rising gains from the front
    for (size_t i = gains.size(); i-- > 0;) {
        while (!candidates.empty() && gains[candidates.back()] >= gains[i])
            candidates.pop_back();
        candidates.push_back(i);
        if (candidates.front() >= i + window)
            candidates.pop_front();
        minima[i] = gains[candidates.front()];
    }
    return minima;
}

} // namespace

float limitPeaks(std::vector<float> &samples, int sampleRate, float ceiling, const PeakLimiterTiming &timing)
{
    std::vector<float> gains = requiredGains(samples, ceiling);
    if (std::all_of(gains.begin(), gains.end(), [](float g) { return g >= 1.0f; }))
        return 1.0f;
    const size_t window = std::max<size_t>(1, size_t(std::lround(timing.lookAheadSeconds * sampleRate)));
    gains = lookAheadMinimum(gains, window);

    // Release: after a peak the gain climbs back towards 1 exponentially, never above what the
    // samples ahead need. Each value still holds for the whole window that follows it.
    const float recovery = float(1.0 - std::exp(-1.0 / (timing.releaseSeconds * sampleRate)));
    float released = 1.0f;
    for (float &g : gains) {
        released = std::min(g, released + (1.0f - released) * recovery);
        g = released;
    }

    // The moving average of the last `window` values: every one of them already covers the
    // current sample, so the mean does too, and the fall towards a peak becomes a smooth ramp.
    // Before the first sample the gain is taken as the first one: a sound that starts with a peak
    // starts with its gain already down.
    double sum = double(window) * gains.front();
    float deepest = 1.0f;
    for (size_t i = 0; i < samples.size(); ++i) {
        sum += gains[i] - (i >= window ? gains[i - window] : gains.front());
        const float gain = std::min(1.0f, float(sum / double(window)));
        samples[i] *= gain;
        deepest = std::min(deepest, gain);
    }
    return deepest;
}
