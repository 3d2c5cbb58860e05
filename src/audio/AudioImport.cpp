#include "audio/AudioImport.h"

#include "audio/AudioDecode.h"
#include "audio/Loudness.h"
#include "audio/Resample.h"
#include "audio/TargetLoudness.h"
#include "setting/FileReplacement.h"
#include "setting/Mp2File.h"
#include "setting/PcFileReplacement.h"

#include <QCoreApplication>
#include <QDir>

#include <cmath>

namespace {

// The limiter holds the samples and the midpoints between them; the wave rises a little higher
// still, and coding at a low bit rate adds noise onto the peaks (up to a dB on sharp speech).
// Starting this far under the ceiling keeps nearly every coded sentence under it at the first try.
constexpr double InterSamplePeakRoomDb = 1.0;
// When the coded sentence still passes the ceiling, the limit goes down by the excess and this.
constexpr double CeilingMarginDb = 0.3;
// Coding again when the coded sentence misses the target loudness by more than this.
constexpr double LoudnessToleranceLu = 0.5;
// Encodings at most: the first nearly always fits, each further one corrects by what the one
// before measured.
constexpr int MaxEncodings = 4;

// The share of an import's time done after each stage, in thousandths, as a standard import of
// speech spends it: decoding, rate conversion, levelling, coding and measuring.
enum Done { Decoded = 150, Converted = 550, Levelled = 650, Coded = 950, Written = 1000 };

bool cancelled(const ImportOptions &options)
{
    return options.cancel && options.cancel->load(std::memory_order_relaxed);
}

void report(const ImportOptions &options, int done)
{
    if (options.progress)
        options.progress->store(done, std::memory_order_relaxed);
}

// The progress of one long step that takes the import from `from` to `to`; it stops the step
// when the import is cancelled.
WorkProgress stepProgress(const ImportOptions &options, Done from, Done to)
{
    return [&options, from, to](double done) {
        report(options, from + int((to - from) * done));
        return !cancelled(options);
    };
}

// Drops what lies under the silence level before the first and after the last louder sample,
// keeping 20 ms at each side so that a word's soft onset and decay stay whole.
void trimSilence(std::vector<float> &mono, int sampleRate)
{
    const float threshold = float(dbToGain(SilenceDb));
    size_t first = 0;
    while (first < mono.size() && std::fabs(mono[first]) < threshold)
        ++first;
    size_t end = mono.size();
    while (end > first && std::fabs(mono[end - 1]) < threshold)
        --end;
    const size_t margin = size_t(sampleRate / 50);
    first = first > margin ? first - margin : 0;
    end = std::min(mono.size(), end + margin);
    mono = std::vector<float>(mono.begin() + qsizetype(first), mono.begin() + qsizetype(end));
}

// The decoder plays whole frames of 1152 samples. Rounding the length to the nearest whole frame
// (padding silence, or dropping at most half a frame of the end) keeps the playing time within
// 18 ms of the recording's, where padding up would add as much as 36 ms.
void fitToWholeFrames(std::vector<float> &mono)
{
    const size_t frames = std::max<size_t>(1, (mono.size() + Mp2FrameSamples / 2) / Mp2FrameSamples);
    mono.resize(frames * Mp2FrameSamples, 0.0f);
}

// Encodes the sentence and measures it as the device will play it and as `dq480-cli info`
// measures the file: decoded, one channel at its own rate.
bool encodeAndMeasure(const std::vector<float> &mono, Mp2Quality quality, QByteArray &mp2,
                      LoudnessMeasure &written, QString &reason, const WorkProgress &progress = {})
{
    mp2 = encodeMp2(mono, quality, reason, progress);
    if (mp2.isEmpty())
        return false;
    if (!isAcceptedMp2Header(mp2)) {
        reason = QCoreApplication::translate("AudioImport",
                                             "the encoded sentence fails the device's MP2 check.");
        return false;
    }
    DecodedAudio played;
    return decodeMpegBytes(mp2, played, reason)
        && measureLoudness(played.samples, played.channels, played.sampleRate, written, reason);
}

bool importInto(const QString &inputPath, const QString &outputPath, const ImportOptions &options,
                ImportResult &result, QString &reason)
{
    DecodedAudio audio;
    if (!decodeAudioFile(inputPath, audio, reason, options.cancel))
        return false;
    report(options, Decoded);
    if (audio.sampleRate < LowestRecordingRate || audio.sampleRate > HighestRecordingRate) {
        reason = QCoreApplication::translate("AudioImport",
                                             "its sample rate of %1 Hz is outside the rates this program "
                                             "converts (%2 to %3 Hz).")
                     .arg(audio.sampleRate)
                     .arg(LowestRecordingRate)
                     .arg(HighestRecordingRate);
        return false;
    }
    std::vector<float> mono = downmixToMono(audio);
    const int inputRate = audio.sampleRate;
    audio = DecodedAudio();
    if (samplePeakDb(mono) < SilenceDb) {
        reason = QCoreApplication::translate("AudioImport", "it is silent (nothing louder than %1 dBFS).")
                     .arg(SilenceDb);
        return false;
    }
    if (options.trimSilence)
        trimSilence(mono, inputRate);
    if (cancelled(options)) {
        reason = QCoreApplication::translate("AudioImport", "the import was cancelled.");
        return false;
    }
    const int rate = mp2SampleRate(options.quality);
    std::vector<float> resampled;
    if (!resampleMono(mono, inputRate, rate, resampled, reason,
                      options.resampling.value_or(converterFor(options.quality)),
                      stepProgress(options, Decoded, Converted)))
        return false;
    mono = std::vector<float>();
    report(options, Converted);
    if (cancelled(options)) {
        reason = QCoreApplication::translate("AudioImport", "the import was cancelled.");
        return false;
    }
    // The true peak of the recording is not needed: the limiter looks at every sample, and the
    // file made is measured in full below.
    LoudnessMeasure measure;
    if (!measureLoudness(resampled, 1, rate, measure, reason, PeakMeasure::None))
        return false;
    if (!std::isfinite(measure.integratedLufs)) {
        reason = QCoreApplication::translate("AudioImport",
                                             "it is silent (quieter than the loudness meter's gate).");
        return false;
    }
    QByteArray mp2;
    LoudnessMeasure written;
    double gainDb = 0.0;
    double peakLimitDb = options.truePeakCeilingDb - InterSamplePeakRoomDb;
    double codingShiftLu = 0.0;
    std::vector<float> levelled;
    for (int encoding = 1;; ++encoding) {
        LevelledGain gain;
        if (options.targetLufs) {
            if (!levelToTarget(resampled, rate, measure.integratedLufs, *options.targetLufs - codingShiftLu,
                               peakLimitDb, levelled, gain, reason))
                return false;
            gainDb = gain.gainDb;
        } else {
            levelled = std::move(resampled); // the only round: no gain, no limiter
        }
        fitToWholeFrames(levelled);
        report(options, Levelled);
        if (cancelled(options)) {
            reason = QCoreApplication::translate("AudioImport", "the import was cancelled.");
            return false;
        }
        // Coding moves the peaks and, a little, the loudness: what counts is the sentence made.
        if (!encodeAndMeasure(levelled, options.quality, mp2, written, reason,
                              stepProgress(options, Levelled, Coded)))
            return false;
        if (!options.targetLufs || encoding == MaxEncodings)
            break;
        const double excessDb = written.truePeakDb - options.truePeakCeilingDb;
        // A loudness the limiter could not reach is not reached by coding again either.
        const double shiftLu = written.integratedLufs - gain.loudnessLufs;
        const bool codingMissed
            = std::fabs(*options.targetLufs - written.integratedLufs) > LoudnessToleranceLu
            && std::fabs(shiftLu) > LoudnessToleranceLu / 2;
        if (excessDb <= 0.0 && !codingMissed)
            break;
        if (excessDb > 0.0)
            peakLimitDb -= excessDb + CeilingMarginDb;
        if (codingMissed)
            codingShiftLu += shiftLu;
    }
    // A sentence still over the ceiling after the last round is turned down as a whole: a little
    // under the target rather than over the ceiling.
    if (options.targetLufs && written.truePeakDb > options.truePeakCeilingDb) {
        const float down = float(dbToGain(options.truePeakCeilingDb - written.truePeakDb - CeilingMarginDb));
        for (float &s : levelled)
            s *= down;
        if (!encodeAndMeasure(levelled, options.quality, mp2, written, reason))
            return false;
    }
    report(options, Coded);
    if (cancelled(options)) {
        reason = QCoreApplication::translate("AudioImport", "the import was cancelled.");
        return false;
    }
    QString writeError;
    if (!writeFileAtomically(outputPath, mp2, writeError)) {
        reason = writeError;
        return false;
    }
    result.outputPath = outputPath;
    result.seconds = double(levelled.size()) / rate;
    result.gainDb = gainDb;
    result.loudnessLufs = written.integratedLufs;
    result.truePeakDb = written.truePeakDb;
    report(options, Written);
    return true;
}

} // namespace

ResampleQuality converterFor(Mp2Quality quality)
{
    return quality == Mp2Quality::Standard ? ResampleQuality::Medium : ResampleQuality::Best;
}

bool importRecording(const QString &inputPath, const QString &outputPath, const ImportOptions &options,
                     ImportResult &result, QString &error)
{
    QString reason;
    if (importInto(inputPath, outputPath, options, result, reason))
        return true;
    error = QCoreApplication::translate("AudioImport", "Cannot import %1: %2")
                .arg(QDir::toNativeSeparators(inputPath), reason);
    return false;
}
