#include "audio/AudioDecode.h"

#include "audio/MpegFrames.h"
#include "audio/Resample.h"
#include "setting/RegularFile.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>

#include <mpg123.h>
#include <sndfile.h>

#include <memory>
#include <mutex>

namespace {

bool cancelled(const std::atomic<bool> *cancel)
{
    return cancel && cancel->load(std::memory_order_relaxed);
}

bool looksLikeMpeg(const QByteArray &head, const QString &path)
{
    if (head.startsWith("ID3"))
        return true;
    if (head.size() >= 2 && quint8(head[0]) == 0xFF && (quint8(head[1]) & 0xE0) == 0xE0)
        return true;
    const QString suffix = path.section(QLatin1Char('.'), -1).toLower();
    return suffix == QLatin1String("mp3") || suffix == QLatin1String("mp2") || suffix == QLatin1String("mpa");
}

// libsndfile repairs a header that promises more sound than the file holds and logs
// "data : 384000 (should be 99956)"; the operator must hear that the recording is cut short.
bool headerPromisesMore(SNDFILE *file)
{
    char log[8192] = {};
    sf_command(file, SFC_GET_LOG_INFO, log, sizeof log);
    static const QRegularExpression promise(QStringLiteral("^(data|SSND) *: *(\\d+) *\\(should be (\\d+)\\)"),
                                            QRegularExpression::MultilineOption);
    const QRegularExpressionMatch match = promise.match(QString::fromLatin1(log));
    return match.hasMatch() && match.captured(2).toLongLong() > match.captured(3).toLongLong();
}

QString sndfileFormatName(int format)
{
    SF_FORMAT_INFO major {};
    major.format = format & SF_FORMAT_TYPEMASK;
    SF_FORMAT_INFO minor {};
    minor.format = format & SF_FORMAT_SUBMASK;
    QString name = sf_command(nullptr, SFC_GET_FORMAT_INFO, &major, sizeof major) == 0
        ? QString::fromUtf8(major.name)
        : QStringLiteral("unknown");
    if (sf_command(nullptr, SFC_GET_FORMAT_INFO, &minor, sizeof minor) == 0)
        name += QStringLiteral(", ") + QString::fromUtf8(minor.name);
    return name;
}

// Why libsndfile could not open a file, in the program's words: its own texts ("SF_INFO struct
// incomplete") mean nothing to an operator.
QString sndfileOpenFailure(const QString &path)
{
    const int code = sf_error(nullptr);
    if (code == SF_ERR_SYSTEM)
        return QCoreApplication::translate("AudioImport", "it cannot be read.");
    if (code == SF_ERR_UNSUPPORTED_ENCODING)
        return QCoreApplication::translate("AudioImport", "it is coded in a way this program cannot read.");
    // A file that starts as a known kind of recording has a header that does not add up.
    QFile file(path);
    const QByteArray head = file.open(QIODevice::ReadOnly) ? file.read(12) : QByteArray();
    const bool knownKind = head.startsWith("RIFF") || head.startsWith("RIFX") || head.startsWith("RF64")
        || head.startsWith("FORM") || head.startsWith("fLaC") || head.startsWith("OggS");
    if (code == SF_ERR_MALFORMED_FILE || knownKind)
        return QCoreApplication::translate(
            "AudioImport",
            "its header is damaged: it does not tell a sample rate, channels and "
            "coding this program can read.");
    return QCoreApplication::translate("AudioImport", "it is not a recording this program can read.");
}

struct SndfileCloser
{
    void operator()(SNDFILE *file) const { sf_close(file); }
};

bool decodeWithSndfile(const QString &path, DecodedAudio &audio, QString &error,
                       const std::atomic<bool> *cancel)
{
    SF_INFO info {};
    std::unique_ptr<SNDFILE, SndfileCloser> file(
        sf_open(QFile::encodeName(path).constData(), SFM_READ, &info));
    if (!file) {
        error = sndfileOpenFailure(path);
        return false;
    }
    if (info.channels <= 0 || info.samplerate <= 0) {
        error = QCoreApplication::translate("AudioImport", "it is not a recording this program can read.");
        return false;
    }
    if (info.frames > 0 && double(info.frames) / info.samplerate > LongestRecordingSeconds) {
        error = QCoreApplication::translate("AudioImport", "it is longer than 30 minutes.");
        return false;
    }
    if (headerPromisesMore(file.get())) {
        error = QCoreApplication::translate("AudioImport",
                                            "it is truncated: the file ends before the recording does.");
        return false;
    }
    audio.sampleRate = info.samplerate;
    audio.channels = info.channels;
    audio.format = sndfileFormatName(info.format);
    audio.samples.clear();
    if (info.frames > 0)
        audio.samples.reserve(size_t(info.frames) * size_t(info.channels));
    const qint64 longest = qint64(LongestRecordingSeconds * info.samplerate);
    std::vector<float> block(size_t(8192) * size_t(info.channels));
    for (;;) {
        if (cancelled(cancel)) {
            error = QCoreApplication::translate("AudioImport", "the import was cancelled.");
            return false;
        }
        const sf_count_t got = sf_readf_float(file.get(), block.data(), 8192);
        if (got <= 0)
            break;
        audio.samples.insert(audio.samples.end(), block.begin(), block.begin() + got * info.channels);
        if (audio.frames() > longest) {
            error = QCoreApplication::translate("AudioImport", "it is longer than 30 minutes.");
            return false;
        }
    }
    if (sf_error(file.get()) != SF_ERR_NO_ERROR) {
        error = QCoreApplication::translate("AudioImport", "it is damaged or truncated.");
        return false;
    }
    if (info.frames > 0 && audio.frames() < info.frames) {
        error = QCoreApplication::translate("AudioImport",
                                            "it is truncated: the file ends before the recording does.");
        return false;
    }
    if (audio.frames() == 0) {
        error = QCoreApplication::translate("AudioImport", "it holds no sound.");
        return false;
    }
    return true;
}

void initMpg123Once()
{
    static std::once_flag once;
    std::call_once(once, [] { mpg123_init(); });
}

struct Mpg123Closer
{
    void operator()(mpg123_handle *handle) const
    {
        mpg123_close(handle);
        mpg123_delete(handle);
    }
};

QString mpegFormatName(mpg123_handle *handle)
{
    mpg123_frameinfo2 frame {};
    if (mpg123_info2(handle, &frame) != MPG123_OK)
        return QStringLiteral("MPEG audio");
    static const char *const Versions[] = {"MPEG-1", "MPEG-2", "MPEG-2.5"};
    const char *version = frame.version >= 0 && frame.version < 3 ? Versions[frame.version] : "MPEG";
    return QStringLiteral("%1 Layer %2, %3 kbit/s")
        .arg(QLatin1String(version),
             frame.layer == 1       ? QStringLiteral("I")
                 : frame.layer == 2 ? QStringLiteral("II")
                                    : QStringLiteral("III"))
        .arg(frame.bitrate);
}

// Decodes the whole stream. With `readAhead`, the decoder takes a frame as the stream's first only
// once the next frame's header confirms it, which keeps it from taking noise for sound; a stream of
// a single frame has no next one and is decoded without.
bool decodeMpegStream(const QByteArray &bytes, bool readAhead, DecodedAudio &audio, QString &error,
                      const std::atomic<bool> *cancel)
{
    initMpg123Once();
    int status = MPG123_OK;
    std::unique_ptr<mpg123_handle, Mpg123Closer> handle(mpg123_new(nullptr, &status));
    if (!handle) {
        error = QCoreApplication::translate("AudioImport", "the MPEG decoder could not start.");
        return false;
    }
    mpg123_param(handle.get(), MPG123_ADD_FLAGS, MPG123_QUIET | (readAhead ? 0 : MPG123_NO_READAHEAD), 0.0);
    mpg123_format_none(handle.get());
    const long *rates = nullptr;
    size_t rateCount = 0;
    mpg123_rates(&rates, &rateCount);
    for (size_t i = 0; i < rateCount; ++i)
        mpg123_format(handle.get(), rates[i], MPG123_MONO | MPG123_STEREO, MPG123_ENC_FLOAT_32);
    if (mpg123_open_feed(handle.get()) != MPG123_OK
        || mpg123_feed(handle.get(), reinterpret_cast<const unsigned char *>(bytes.constData()),
                       size_t(bytes.size()))
            != MPG123_OK) {
        error = QCoreApplication::translate("AudioImport", "the MPEG decoder refused it.");
        return false;
    }
    audio.samples.clear();
    audio.sampleRate = 0;
    audio.channels = 0;
    std::vector<float> block(16384);
    for (;;) {
        if (cancelled(cancel)) {
            error = QCoreApplication::translate("AudioImport", "the import was cancelled.");
            return false;
        }
        size_t done = 0;
        status = mpg123_read(handle.get(), reinterpret_cast<unsigned char *>(block.data()),
                             block.size() * sizeof(float), &done);
        if (status == MPG123_NEW_FORMAT) {
            long rate = 0;
            int channels = 0;
            int encoding = 0;
            mpg123_getformat(handle.get(), &rate, &channels, &encoding);
            if (audio.channels != 0 && (audio.sampleRate != rate || audio.channels != channels)) {
                error = QCoreApplication::translate("AudioImport",
                                                    "it changes its sample rate or channels midway.");
                return false;
            }
            audio.sampleRate = int(rate);
            audio.channels = channels;
            audio.format = mpegFormatName(handle.get());
        }
        const size_t values = done / sizeof(float);
        audio.samples.insert(audio.samples.end(), block.begin(), block.begin() + qsizetype(values));
        if (audio.sampleRate > 0 && audio.seconds() > LongestRecordingSeconds) {
            error = QCoreApplication::translate("AudioImport", "it is longer than 30 minutes.");
            return false;
        }
        // Fed the whole file at once, "needs more" is the end of what the file holds.
        if (status == MPG123_NEED_MORE || status == MPG123_DONE)
            return true;
        if (status != MPG123_OK && status != MPG123_NEW_FORMAT) {
            error = QCoreApplication::translate("AudioImport", "it is damaged.");
            return false;
        }
    }
}

// The encoder leaves out up to about two frames at the start and the end (its delay and padding),
// which the decoder drops again; more missing than this is sound the decoder could not make.
constexpr int UndecodedFramesAllowed = 3;

bool decodeMpeg(const QByteArray &bytes, DecodedAudio &audio, QString &error, const std::atomic<bool> *cancel)
{
    if (!decodeMpegStream(bytes, true, audio, error, cancel))
        return false;
    const MpegStreamLength stream = measureMpegStream(bytes);
    if (audio.frames() == 0 && stream.audioFrames == 1
        && !decodeMpegStream(bytes, false, audio, error, cancel))
        return false;
    if (audio.channels == 0 || audio.frames() == 0) {
        error = QCoreApplication::translate(
            "AudioImport", "it is not a recording this program can read (no MPEG audio found).");
        return false;
    }
    // The decoder stops quietly where the file stops: only the frame headers and the encoder's own
    // count tell that more was meant to follow.
    if (stream.truncated()) {
        error = QCoreApplication::translate("AudioImport",
                                            "it is truncated: the file ends before the recording does.");
        return false;
    }
    if (audio.frames() + UndecodedFramesAllowed * stream.samplesPerFrame < stream.audioSamples()) {
        error = QCoreApplication::translate("AudioImport",
                                            "it is damaged: part of its sound cannot be decoded.");
        return false;
    }
    return true;
}

} // namespace

bool decodeAudioFile(const QString &path, DecodedAudio &audio, QString &error,
                     const std::atomic<bool> *cancel)
{
    error = recordingPathProblem(path);
    if (!error.isEmpty())
        return false;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        error = QCoreApplication::translate("AudioImport", "it cannot be read (%1).").arg(file.errorString());
        return false;
    }
    // Replaced by a pipe or a device since the look above: libsndfile would wait on it for ever.
    if (file.isSequential()) {
        error = QCoreApplication::translate("AudioImport",
                                            "it is a pipe or a device, not a file: only files are read.");
        return false;
    }
    const QByteArray head = file.peek(4);
    if (looksLikeMpeg(head, path)) {
        // The largest MPEG file of half an hour (320 kbit/s) is about 72 MB; bigger is refused unread.
        if (file.size() > qint64(LongestRecordingSeconds * 320000 / 8) + 1024 * 1024) {
            error = QCoreApplication::translate("AudioImport", "it is longer than 30 minutes.");
            return false;
        }
        const QByteArray bytes = file.readAll();
        if (file.error() != QFileDevice::NoError) {
            error = QCoreApplication::translate("AudioImport", "it cannot be read (%1).")
                        .arg(file.errorString());
            return false;
        }
        return decodeMpeg(bytes, audio, error, cancel);
    }
    file.close();
    return decodeWithSndfile(path, audio, error, cancel);
}

bool decodeMpegBytes(const QByteArray &bytes, DecodedAudio &audio, QString &error)
{
    return decodeMpeg(bytes, audio, error, nullptr);
}

namespace {

std::optional<MpegLength> scannedLength(const QString &path, bool readAhead)
{
    initMpg123Once();
    int status = MPG123_OK;
    std::unique_ptr<mpg123_handle, Mpg123Closer> handle(mpg123_new(nullptr, &status));
    if (!handle)
        return std::nullopt;
    mpg123_param(handle.get(), MPG123_ADD_FLAGS, MPG123_QUIET | (readAhead ? 0 : MPG123_NO_READAHEAD), 0.0);
    if (mpg123_open(handle.get(), QFile::encodeName(path).constData()) != MPG123_OK
        || mpg123_scan(handle.get()) != MPG123_OK)
        return std::nullopt;
    long rate = 0;
    int channels = 0;
    int encoding = 0;
    const off_t samples = mpg123_length(handle.get());
    if (mpg123_getformat(handle.get(), &rate, &channels, &encoding) != MPG123_OK || rate <= 0 || samples <= 0)
        return std::nullopt;
    return MpegLength {int(rate), qint64(samples)};
}

} // namespace

std::optional<MpegLength> mpegFileLength(const QString &path)
{
    if (pathKind(path) != PathKind::File)
        return std::nullopt;
    if (const std::optional<MpegLength> length = scannedLength(path, true))
        return length;
    // A sentence of one frame has no second frame to confirm the first: it is scanned without
    // that check once its header is seen to describe the whole file.
    QFile file(path);
    constexpr qint64 LargestSingleFrameFile = 64 * 1024;
    if (!file.open(QIODevice::ReadOnly) || file.size() > LargestSingleFrameFile
        || measureMpegStream(file.readAll()).audioFrames != 1)
        return std::nullopt;
    return scannedLength(path, false);
}

double mpegFileSeconds(const QString &path)
{
    const std::optional<MpegLength> length = mpegFileLength(path);
    return length ? double(length->samples) / double(length->sampleRate) : -1.0;
}

bool decodeMonoAt(const QString &path, int rate, std::vector<float> &samples, QString &error)
{
    DecodedAudio audio;
    return decodeAudioFile(path, audio, error)
        && resampleMono(downmixToMono(audio), audio.sampleRate, rate, samples, error);
}
