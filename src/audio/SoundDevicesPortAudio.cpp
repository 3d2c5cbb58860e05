// Recording and streamed sound through PortAudio (MME or WASAPI on Windows). PortAudio's own
// thread meets the user-interface thread only in a ring of samples whose two ends each side moves
// alone.

#include "audio/SoundDevices.h"

#include <QCoreApplication>

#include <algorithm>
#include <atomic>
#include <portaudio.h>

namespace {

// One writer and one reader, each on its own thread; the counters only grow.
class SampleRing
{
public:
    explicit SampleRing(size_t capacity)
        : m_samples(capacity)
    { }
    size_t queued() const
    {
        return m_written.load(std::memory_order_acquire) - m_read.load(std::memory_order_acquire);
    }
    size_t room() const { return m_samples.size() - queued(); }
    qint64 read() const { return qint64(m_read.load(std::memory_order_acquire)); }

    // Writes as many as there is room for; returns how many.
    size_t push(const float *samples, size_t count)
    {
        const size_t start = m_written.load(std::memory_order_relaxed);
        count = std::min(count, room());
        for (size_t i = 0; i < count; ++i)
            m_samples[(start + i) % m_samples.size()] = samples[i];
        m_written.store(start + count, std::memory_order_release);
        return count;
    }
    // Reads up to `count`; returns how many.
    size_t pop(float *samples, size_t count)
    {
        const size_t start = m_read.load(std::memory_order_relaxed);
        count = std::min(count, queued());
        for (size_t i = 0; i < count; ++i)
            samples[i] = m_samples[(start + i) % m_samples.size()];
        m_read.store(start + count, std::memory_order_release);
        return count;
    }

private:
    std::vector<float> m_samples;
    std::atomic<size_t> m_written {0};
    std::atomic<size_t> m_read {0};
};

// Keeps PortAudio started while an object that uses it lives.
struct PortAudioUse
{
    bool started = Pa_Initialize() == paNoError;
    ~PortAudioUse()
    {
        if (started)
            Pa_Terminate();
    }
};

QString notStarted()
{
    return QCoreApplication::translate("SoundDevices", "the PC's sound system does not start.");
}

QString deviceName(PaDeviceIndex device)
{
    const PaDeviceInfo *info = Pa_GetDeviceInfo(device);
    return info ? QString::fromUtf8(info->name) : QString();
}

// The inputs of the host interface the program plays sentences through: each device shows once.
QList<SoundInput> listInputs()
{
    QList<SoundInput> inputs;
    const PaHostApiIndex host = Pa_GetDefaultHostApi();
    const PaDeviceIndex standard = Pa_GetDefaultInputDevice();
    for (PaDeviceIndex device = 0; device < Pa_GetDeviceCount(); ++device) {
        const PaDeviceInfo *info = Pa_GetDeviceInfo(device);
        if (!info || info->maxInputChannels < 1 || info->hostApi != host)
            continue;
        const QString name = QString::fromUtf8(info->name);
        inputs.append({name.toUtf8(), name, device == standard});
    }
    return inputs;
}

class PortAudioCapture final : public SoundCapture
{
public:
    PortAudioUse use;
    SampleRing ring {size_t(48000) * 20}; // 20 s at the usual rates: far more than the recorder waits
    QString name;
    int rate = 48000;
    int channels = 1;
    PaStream *stream = nullptr;
    std::atomic<bool> overflowed {false};

    ~PortAudioCapture() override
    {
        if (stream) {
            Pa_AbortStream(stream);
            Pa_CloseStream(stream);
        }
    }

    // Runs on PortAudio's thread: mixes the channels down and queues the samples.
    static int collect(const void *in, void *, unsigned long frames, const PaStreamCallbackTimeInfo *,
                       PaStreamCallbackFlags, void *data)
    {
        auto &capture = *static_cast<PortAudioCapture *>(data);
        const auto *samples = static_cast<const float *>(in);
        float mono[256];
        for (unsigned long done = 0; samples && done < frames;) {
            const unsigned long count = std::min<unsigned long>(frames - done, 256);
            for (unsigned long i = 0; i < count; ++i) {
                float sum = 0.0f;
                for (int c = 0; c < capture.channels; ++c)
                    sum += samples[(done + i) * unsigned(capture.channels) + unsigned(c)];
                mono[i] = sum / float(capture.channels);
            }
            if (capture.ring.push(mono, count) < count)
                capture.overflowed = true;
            done += count;
        }
        return paContinue;
    }

    int sampleRate() const override { return rate; }

    void take(std::vector<float> &samples) override
    {
        const size_t before = samples.size();
        samples.resize(before + ring.queued());
        samples.resize(before + ring.pop(samples.data() + before, samples.size() - before));
    }

    QString failure() override
    {
        if (overflowed)
            return QCoreApplication::translate(
                       "SoundDevices",
                       "the PC was too busy to keep up with the input \"%1\", and sound "
                       "was lost.")
                .arg(name);
        if (Pa_IsStreamActive(stream) != 1)
            return QCoreApplication::translate("SoundDevices", "the input \"%1\" stopped sending sound.")
                .arg(name);
        return {};
    }
};

class PortAudioStream final : public SoundStream
{
public:
    PortAudioUse use;
    SampleRing ring;
    int rate;
    PaStream *stream = nullptr;

    explicit PortAudioStream(int sampleRate)
        : ring(size_t(sampleRate) * 4 / 10) // 0.4 s: enough to ride over a busy user-interface thread
        , rate(sampleRate)
    { }
    ~PortAudioStream() override
    {
        if (stream) {
            Pa_AbortStream(stream);
            Pa_CloseStream(stream);
        }
    }

    // Runs on PortAudio's thread: plays what is queued, silence where nothing is.
    static int feed(const void *, void *out, unsigned long frames, const PaStreamCallbackTimeInfo *,
                    PaStreamCallbackFlags, void *data)
    {
        auto &stream = *static_cast<PortAudioStream *>(data);
        auto *samples = static_cast<float *>(out);
        const size_t given = stream.ring.pop(samples, frames);
        std::fill(samples + given, samples + frames, 0.0f);
        return paContinue;
    }

    qint64 room() override { return qint64(ring.room()); }
    void write(const float *samples, qint64 count) override { ring.push(samples, size_t(count)); }
    qint64 played() override { return ring.read(); }
    qint64 latency() override
    {
        const PaStreamInfo *info = Pa_GetStreamInfo(stream);
        return info ? qint64(info->outputLatency * rate) : 0;
    }
    QString failure() override
    {
        if (Pa_IsStreamActive(stream) == 1)
            return {};
        return QCoreApplication::translate("SoundDevices", "the PC's audio output stopped playing.");
    }
};

} // namespace

bool hasSoundOutput()
{
    PortAudioUse use;
    return use.started && Pa_GetDefaultOutputDevice() != paNoDevice;
}

QList<SoundInput> soundInputs(QString &error)
{
    PortAudioUse use;
    if (!use.started) {
        error = notStarted();
        return {};
    }
    return listInputs();
}

std::unique_ptr<SoundCapture> startSoundCapture(const QByteArray &id, QString &reason)
{
    auto capture = std::make_unique<PortAudioCapture>();
    if (!capture->use.started) {
        reason = notStarted();
        return nullptr;
    }
    const PaHostApiIndex host = Pa_GetDefaultHostApi();
    PaDeviceIndex device = paNoDevice;
    for (PaDeviceIndex i = 0; i < Pa_GetDeviceCount() && device == paNoDevice; ++i) {
        const PaDeviceInfo *info = Pa_GetDeviceInfo(i);
        if (info && info->maxInputChannels > 0 && info->hostApi == host && QByteArray(info->name) == id)
            device = i;
    }
    if (device == paNoDevice) {
        reason = QCoreApplication::translate("SoundDevices", "the input is not there any more.");
        return nullptr;
    }
    const PaDeviceInfo *info = Pa_GetDeviceInfo(device);
    capture->name = deviceName(device);
    capture->rate = int(info->defaultSampleRate);
    // Mono where the input gives it; else its first two channels, mixed down here.
    PaStreamParameters input {device, 1, paFloat32, info->defaultLowInputLatency, nullptr};
    if (Pa_IsFormatSupported(&input, nullptr, info->defaultSampleRate) != paFormatIsSupported)
        input.channelCount = std::min(info->maxInputChannels, 2);
    capture->channels = input.channelCount;
    if (Pa_OpenStream(&capture->stream, &input, nullptr, info->defaultSampleRate,
                      paFramesPerBufferUnspecified, paNoFlag, &PortAudioCapture::collect, capture.get())
            != paNoError
        || Pa_StartStream(capture->stream) != paNoError) {
        reason = QCoreApplication::translate("SoundDevices", "the input \"%1\" cannot be opened.")
                     .arg(capture->name);
        return nullptr;
    }
    return capture;
}

std::unique_ptr<SoundStream> openSoundStream(int sampleRate, QString &reason)
{
    auto stream = std::make_unique<PortAudioStream>(sampleRate);
    if (!stream->use.started) {
        reason = notStarted();
        return nullptr;
    }
    if (Pa_GetDefaultOutputDevice() == paNoDevice) {
        reason = QCoreApplication::translate("SoundDevices", "this PC has no audio output.");
        return nullptr;
    }
    const PaError opened
        = Pa_OpenDefaultStream(&stream->stream, 0, 1, paFloat32, sampleRate, paFramesPerBufferUnspecified,
                               &PortAudioStream::feed, stream.get());
    if (opened != paNoError) {
        stream->stream = nullptr;
        reason = opened == paInvalidSampleRate
            ? QCoreApplication::translate("SoundDevices", "the PC's audio output does not take %1 Hz.")
                  .arg(sampleRate)
            : QCoreApplication::translate("SoundDevices", "the PC's audio output cannot be opened.");
        return nullptr;
    }
    if (Pa_StartStream(stream->stream) != paNoError) {
        reason = QCoreApplication::translate("SoundDevices", "the PC's audio output cannot be opened.");
        return nullptr;
    }
    return stream;
}
