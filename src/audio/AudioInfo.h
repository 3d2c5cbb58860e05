#pragma once

#include <QString>

#include <optional>

/// What `dq480-cli info` tells about a file.
struct AudioInfo
{
    QString format;
    int sampleRate = 0;
    int channels = 0;
    double seconds = 0.0;
    double integratedLufs = 0.0; // minus infinity for silence
    double truePeakDb = 0.0;
    bool deviceAccepts = false; // passes the card write's MP2 check
};

/// Decodes and measures a recording. False with `error` (naming the file) when it cannot.
bool probeAudioFile(const QString &path, AudioInfo &info, QString &error);

/// The playing time of an MP2 file in seconds (its frames counted by libmpg123, without decoding,
/// so that a table of sentences shows at once); none when the file cannot be read or holds no
/// MPEG audio.
std::optional<double> mp2Duration(const QString &path);

/// "1:05.3": minutes and seconds to a tenth.
QString formatDuration(double seconds);
