#include "audio/AudioInfo.h"

#include "audio/AudioDecode.h"
#include "audio/Loudness.h"
#include "setting/Mp2File.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

bool probeAudioFile(const QString &path, AudioInfo &info, QString &error)
{
    DecodedAudio audio;
    QString reason;
    LoudnessMeasure measure;
    if (!decodeAudioFile(path, audio, reason)
        || !measureLoudness(audio.samples, audio.channels, audio.sampleRate, measure, reason)) {
        error = QCoreApplication::translate("AudioImport", "Cannot read %1: %2")
                    .arg(QDir::toNativeSeparators(path), reason);
        return false;
    }
    info.format = audio.format;
    info.sampleRate = audio.sampleRate;
    info.channels = audio.channels;
    info.seconds = audio.seconds();
    info.integratedLufs = measure.integratedLufs;
    info.truePeakDb = measure.truePeakDb;
    info.deviceAccepts = IsValidMp2File(path);
    return true;
}

std::optional<double> mp2Duration(const QString &path)
{
    const double seconds = mpegFileSeconds(path);
    return seconds >= 0.0 ? std::optional<double>(seconds) : std::nullopt;
}
