#include "audio/TargetLoudness.h"

#include "audio/Loudness.h"
#include "audio/PeakLimiter.h"

#include <algorithm>
#include <cmath>

namespace {

// Rounds of limiting and measuring; the missing loudness shrinks several times with each one.
constexpr int MaxRounds = 4;
// Close enough to stop: a tenth of what a listener tells apart.
constexpr double ToleranceLu = 0.1;
// The most the gain is raised over the plain one to make up for limiting. A target that needs
// more would squash the whole sound against the ceiling; it stays short of the target instead.
constexpr double MaxMakeUpDb = 6.0;

} // namespace

bool levelToTarget(const std::vector<float> &samples, int sampleRate, double measuredLufs, double targetLufs,
                   double peakLimitDb, std::vector<float> &out, LevelledGain &levelled, QString &error)
{
    const double plainDb = targetLufs - measuredLufs;
    const float limit = float(dbToGain(peakLimitDb));
    PeakLimiter limiter(samples, sampleRate);
    double gainDb = plainDb;
    // How much louder the limited sound gets per dB of gain, from the last two rounds: less than
    // 1, since the limiter takes back part of each step. The first step assumes all of it.
    double previousGainDb = 0.0;
    double previousLufs = 0.0;
    for (int round = 0; round < MaxRounds; ++round) {
        levelled.gainDb = gainDb;
        // Nothing limited: the loudness moved exactly by the gain.
        if (limiter.apply(float(dbToGain(gainDb)), limit, out) >= 1.0f) {
            levelled.loudnessLufs = measuredLufs + gainDb;
            return true;
        }
        LoudnessMeasure measure;
        if (!measureLoudness(out, 1, sampleRate, measure, error, PeakMeasure::None))
            return false;
        levelled.loudnessLufs = measure.integratedLufs;
        const double missing = targetLufs - measure.integratedLufs;
        if (std::fabs(missing) <= ToleranceLu || gainDb - plainDb >= MaxMakeUpDb)
            return true;
        const double slope = round == 0
            ? 1.0
            : std::clamp((measure.integratedLufs - previousLufs) / (gainDb - previousGainDb), 0.2, 1.0);
        previousGainDb = gainDb;
        previousLufs = measure.integratedLufs;
        gainDb = std::min(gainDb + missing / slope, plainDb + MaxMakeUpDb);
    }
    return true;
}
