#pragma once

#include "audio/Mp2Encode.h"
#include "audio/Resample.h"

#include <QString>

#include <atomic>
#include <optional>

/// How a recording becomes a sentence.
struct ImportOptions
{
    Mp2Quality quality = Mp2Quality::Standard;
    /// The integrated loudness to reach, in LUFS; none keeps the recording's level.
    std::optional<double> targetLufs = -16.0;
    /// The true peak the written sentence keeps at or under, in dBTP, when a target is given.
    double truePeakCeilingDb = -1.0;
    /// The sample rate converter; none takes the one the quality needs (`converterFor`).
    std::optional<ResampleQuality> resampling;
    /// Cut silence (under -50 dBFS) at the start and the end.
    bool trimSilence = false;
    /// Set from another thread to stop; the import then writes nothing.
    const std::atomic<bool> *cancel = nullptr;
    /// Told how far the import has come, in thousandths, for a progress bar in another thread.
    std::atomic<int> *progress = nullptr;
};

/// What was written.
struct ImportResult
{
    QString outputPath;
    double seconds = 0.0;
    double loudnessLufs = 0.0; // of the written sentence, decoded: what `dq480-cli info` shows
    double truePeakDb = 0.0; // the same
    double gainDb = 0.0; // before the peak limiter
};

/// The converter whose band covers all the encoder keeps at `quality`. A standard sentence (64
/// kbit/s at 32 kHz) codes 27 of its 32 subbands, nothing above 13.5 kHz, so the medium converter's
/// 14.4 kHz loses nothing the card keeps, in a third of the best one's time. A high sentence
/// (128 kbit/s at 44.1 kHz) codes up to 20.7 kHz, past the medium converter's 19.8 kHz.
ResampleQuality converterFor(Mp2Quality quality);

/// The sample rates a recording may have: the rate converter reaches at most 256 times up or down,
/// and real recordings lie well within that.
constexpr int LowestRecordingRate = 1000;
constexpr int HighestRecordingRate = 768000;

/// Level under which a recording counts as silence, at its ends or as a whole.
constexpr double SilenceDb = -50.0;

/// Makes one device-ready MP2 from a recording: mono, the quality's rate, optionally trimmed,
/// brought to the target loudness with the peaks that would pass the ceiling limited, encoded,
/// decoded and measured (encoded again, a little lower, when coding pushed a peak over the
/// ceiling), checked with the card write's MP2 rule and written atomically to `outputPath`
/// (replacing a file there). False with `error` naming the recording and the reason; then nothing
/// is written.
bool importRecording(const QString &inputPath, const QString &outputPath, const ImportOptions &options,
                     ImportResult &result, QString &error);
