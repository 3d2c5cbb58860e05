#include "audio/PeakLimiter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <deque>

namespace {

constexpr int Taps = 8; // of the interpolator: samples -3 .. +4 around each point between them
constexpr int Phases = 3; // the points a quarter, a half and three quarters of the way

// Lanczos kernel (a = 4) at the three points between two samples, each normalized to pass a
// constant level unchanged.
std::array<std::array<float, Taps>, Phases> interpolator()
{
    const auto sinc = [](double x) {
        return x == 0.0 ? 1.0 : std::sin(3.141592653589793 * x) / (3.141592653589793 * x);
    };
    std::array<std::array<float, Taps>, Phases> kernel {};
    for (int p = 0; p < Phases; ++p) {
        const double position = (p + 1) / 4.0;
        double sum = 0.0;
        std::array<double, Taps> taps {};
        for (int k = 0; k < Taps; ++k) {
            const double d = (k - 3) - position;
            taps[size_t(k)] = sinc(d) * sinc(d / 4.0);
            sum += taps[size_t(k)];
        }
        for (int k = 0; k < Taps; ++k)
            kernel[size_t(p)][size_t(k)] = float(taps[size_t(k)] / sum);
    }
    return kernel;
}

// The smallest of `gains[i .. i + window - 1]` for every i, with a queue of the candidates still
// ahead, in one pass from the end.
std::vector<float> lookAheadMinimum(const std::vector<float> &gains, size_t window)
{
    std::vector<float> minima(gains.size());
    std::deque<size_t> candidates; // indices rising and gains falling towards the front
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

PeakLimiter::PeakLimiter(const std::vector<float> &samples, int sampleRate, const PeakLimiterTiming &timing)
    : m_samples(samples)
    , m_rate(sampleRate)
    , m_timing(timing)
{
    for (const float s : samples)
        m_samplePeak = std::max(m_samplePeak, std::fabs(s));
}

void PeakLimiter::estimatePeaks()
{
    static const auto kernel = interpolator();
    const size_t n = m_samples.size();
    std::vector<float> padded(n + Taps, 0.0f);
    std::copy(m_samples.begin(), m_samples.end(), padded.begin() + 3);
    // between[i]: the highest of the three points from sample i to sample i + 1.
    std::vector<float> between(n, 0.0f);
    for (size_t i = 0; i < n; ++i) {
        const float *x = padded.data() + i;
        float highest = 0.0f;
        for (const auto &taps : kernel) {
            float y = 0.0f;
            for (int k = 0; k < Taps; ++k)
                y += taps[size_t(k)] * x[k];
            highest = std::max(highest, std::fabs(y));
        }
        between[i] = highest;
    }
    m_peaks.resize(n);
    for (size_t i = 0; i < n; ++i)
        m_peaks[i] = std::max({std::fabs(m_samples[i]), between[i], i > 0 ? between[i - 1] : 0.0f});
}

float PeakLimiter::apply(float gain, float ceiling, std::vector<float> &out)
{
    out.resize(m_samples.size());
    std::transform(m_samples.begin(), m_samples.end(), out.begin(), [gain](float s) { return s * gain; });
    // Between samples a band-limited wave rises at most a few dB over them: a sound peaking 6 dB
    // under the ceiling cannot reach it.
    if (out.empty() || m_samplePeak * gain <= ceiling / 2.0f)
        return 1.0f;
    if (m_peaks.empty())
        estimatePeaks();

    // The gain each sample needs on its own to keep the wave around it under the ceiling.
    std::vector<float> gains(out.size(), 1.0f);
    bool passes = false;
    for (size_t i = 0; i < out.size(); ++i) {
        const float peak = m_peaks[i] * gain;
        if (peak > ceiling) {
            gains[i] = ceiling / peak;
            passes = true;
        }
    }
    if (!passes)
        return 1.0f;
    const size_t window = std::max<size_t>(1, size_t(std::lround(m_timing.lookAheadSeconds * m_rate)));
    gains = lookAheadMinimum(gains, window);

    // Release: after a peak the gain climbs back towards 1 exponentially, never above what the
    // samples ahead need. Each value still holds for the whole window that follows it.
    const float recovery = float(1.0 - std::exp(-1.0 / (m_timing.releaseSeconds * m_rate)));
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
    for (size_t i = 0; i < out.size(); ++i) {
        sum += gains[i] - (i >= window ? gains[i - window] : gains.front());
        const float reduction = std::min(1.0f, float(sum / double(window)));
        out[i] *= reduction;
        deepest = std::min(deepest, reduction);
    }
    return deepest;
}
