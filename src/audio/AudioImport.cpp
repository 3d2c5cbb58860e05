#include "AudioImport.h"

#include "AudioDecode.h"
#include "FileReplacement.h"
#include "Loudness.h"
#include "Mp2File.h"
#include "Resample.h"

#include <QCoreApplication>
#include <QDir>

#include <cmath>

namespace {

bool cancelled(const ImportOptions &options)
{
    return options.cancel && options.cancel->load(std::memory_order_relaxed);
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

bool importInto(const QString &inputPath, const QString &outputPath, const ImportOptions &options,
                ImportResult &result, QString &reason)
{
    DecodedAudio audio;
    if (!decodeAudioFile(inputPath, audio, reason, options.cancel))
        return false;
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
                      options.resampling.value_or(converterFor(options.quality))))
        return false;
    mono = std::vector<float>();
    if (cancelled(options)) {
        reason = QCoreApplication::translate("AudioImport", "the import was cancelled.");
        return false;
    }
    LoudnessMeasure measure;
    if (!measureLoudness(resampled, 1, rate, measure, reason))
        return false;
    if (!std::isfinite(measure.integratedLufs)) {
        reason = QCoreApplication::translate("AudioImport",
                                             "it is silent (quieter than the loudness meter's gate).");
        return false;
    }
    double gainDb = 0.0;
    if (options.targetLufs)
        gainDb = std::min(*options.targetLufs - measure.integratedLufs,
                          options.truePeakCeilingDb - measure.truePeakDb);
    const float gain = float(dbToGain(gainDb));
    for (float &s : resampled)
        s *= gain;
    fitToWholeFrames(resampled);
    if (cancelled(options)) {
        reason = QCoreApplication::translate("AudioImport", "the import was cancelled.");
        return false;
    }
    const QByteArray mp2 = encodeMp2(resampled, options.quality, reason);
    if (mp2.isEmpty())
        return false;
    if (!isAcceptedMp2Header(mp2)) {
        reason = QCoreApplication::translate("AudioImport",
                                             "the encoded sentence fails the device's MP2 check.");
        return false;
    }
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
    result.seconds = double(resampled.size()) / rate;
    result.gainDb = gainDb;
    result.loudnessLufs = measure.integratedLufs + gainDb;
    result.truePeakDb = measure.truePeakDb + gainDb;
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
