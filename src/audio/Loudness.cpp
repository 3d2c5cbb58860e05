#include "audio/Loudness.h"

#include <QCoreApplication>

#include <ebur128.h>

#include <cmath>
#include <memory>

namespace {

struct StateCloser
{
    void operator()(ebur128_state *state) const { ebur128_destroy(&state); }
};

double toDb(double linear)
{
    return linear > 0.0 ? 20.0 * std::log10(linear) : -std::numeric_limits<double>::infinity();
}

} // namespace

bool measureLoudness(const std::vector<float> &samples, int channels, int sampleRate,
                     LoudnessMeasure &measure, QString &error, PeakMeasure peak)
{
    const int mode = peak == PeakMeasure::TruePeak ? EBUR128_MODE_I | EBUR128_MODE_TRUE_PEAK : EBUR128_MODE_I;
    std::unique_ptr<ebur128_state, StateCloser> state(
        ebur128_init(unsigned(channels), unsigned(sampleRate), mode));
    if (!state) {
        error = QCoreApplication::translate("AudioImport", "the loudness meter refused %1 channels at %2 Hz.")
                    .arg(channels)
                    .arg(sampleRate);
        return false;
    }
    // A mono recording plays from one loudspeaker: it counts once, as the centre channel does.
    if (channels == 1)
        ebur128_set_channel(state.get(), 0, EBUR128_CENTER);
    const size_t frames = samples.size() / size_t(channels);
    if (frames > 0 && ebur128_add_frames_float(state.get(), samples.data(), frames) != EBUR128_SUCCESS) {
        error = QCoreApplication::translate("AudioImport", "the loudness meter failed.");
        return false;
    }
    double highest = 0.0;
    for (int c = 0; peak == PeakMeasure::TruePeak && c < channels; ++c) {
        double peak = 0.0;
        if (ebur128_true_peak(state.get(), unsigned(c), &peak) == EBUR128_SUCCESS)
            highest = std::max(highest, peak);
    }
    // The meter needs 400 ms to give a value; a shorter chime is measured played over until it
    // lasts that long, which is the loudness a listener hears while it plays. Its peak stays the
    // one measured above: the joins are not part of the sound.
    const size_t shortest = size_t(sampleRate) * 4 / 10 + 1;
    for (size_t measured = frames; frames > 0 && measured < shortest; measured += frames) {
        if (ebur128_add_frames_float(state.get(), samples.data(), frames) != EBUR128_SUCCESS) {
            error = QCoreApplication::translate("AudioImport", "the loudness meter failed.");
            return false;
        }
    }
    double loudness = 0.0;
    if (ebur128_loudness_global(state.get(), &loudness) != EBUR128_SUCCESS) {
        error = QCoreApplication::translate("AudioImport", "the loudness meter failed.");
        return false;
    }
    measure.integratedLufs = std::isfinite(loudness) ? loudness : -std::numeric_limits<double>::infinity();
    measure.truePeakDb = toDb(highest);
    return true;
}

double samplePeakDb(const std::vector<float> &samples)
{
    float highest = 0.0f;
    for (const float s : samples)
        highest = std::max(highest, std::fabs(s));
    return toDb(highest);
}

double dbToGain(double db)
{
    return std::pow(10.0, db / 20.0);
}
