#pragma once

#include <QString>

#include <atomic>
#include <optional>
#include <vector>

/// A recording read into memory: 32-bit float samples, channels interleaved.
struct DecodedAudio
{
    int sampleRate = 0;
    int channels = 0;
    std::vector<float> samples;
    QString format; // for people: "WAV (Microsoft), 16-bit PCM" or "MPEG-1 Layer II"

    qint64 frames() const { return channels > 0 ? qint64(samples.size()) / channels : 0; }
    double seconds() const { return sampleRate > 0 ? double(frames()) / sampleRate : 0.0; }
};

/// The longest recording accepted: a sentence is an announcement, and a longer file is most
/// likely a wrong choice that would fill the memory.
constexpr double LongestRecordingSeconds = 30 * 60;

/// Why `path` cannot be a recording before a byte of it is read, in the operator's words: it is
/// missing, a folder, or a pipe or a device (which would be read for ever); empty for a file.
QString recordingPathProblem(const QString &path);

/// Reads a whole recording. MPEG audio (MP3, MP2, with or without an ID3 tag) goes through
/// libmpg123, everything else through libsndfile. False with `error` (the reason only, without the
/// file name) for a file that cannot be read, is no regular file, is not audio this program knows,
/// is truncated or damaged, is longer than `LongestRecordingSeconds`, or when `cancel` becomes
/// true.
bool decodeAudioFile(const QString &path, DecodedAudio &audio, QString &error,
                     const std::atomic<bool> *cancel = nullptr);

/// The same from bytes in memory, for MPEG audio only (what the encoder just produced).
bool decodeMpegBytes(const QByteArray &bytes, DecodedAudio &audio, QString &error);

/// An MPEG audio file's rate and length in samples per channel, as its decoding gives them.
struct MpegLength
{
    int sampleRate = 0;
    qint64 samples = 0;
};

/// The rate and length of an MPEG audio file from its frame headers (libmpg123 scans them without
/// decoding); none when the file is no regular file, cannot be read or holds no MPEG audio.
std::optional<MpegLength> mpegFileLength(const QString &path);

/// The playing time of an MPEG audio file from its frame headers (libmpg123 scans them without
/// decoding); negative when the file cannot be read or holds no MPEG audio.
double mpegFileSeconds(const QString &path);

/// Averages the channels into one.
std::vector<float> downmixToMono(const DecodedAudio &audio);

/// A recording's sound as mono samples at `rate`: decoded, its channels averaged, its rate
/// converted. False with `error` (the reason only) as `decodeAudioFile`.
bool decodeMonoAt(const QString &path, int rate, std::vector<float> &samples, QString &error);
