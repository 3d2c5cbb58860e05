// Recording and streamed sound through Qt Multimedia (PulseAudio on Linux).

#include "audio/SoundDevices.h"

#include <QAudioDevice>
#include <QAudioFormat>
#include <QAudioSink>
#include <QAudioSource>
#include <QCoreApplication>
#include <QMediaDevices>

#include <algorithm>
#include <cstring>

namespace {

bool isListed(const QByteArray &id)
{
    const QList<QAudioDevice> inputs = QMediaDevices::audioInputs();
    return std::any_of(inputs.begin(), inputs.end(),
                       [&](const QAudioDevice &input) { return input.id() == id; });
}

class QtSoundCapture final : public SoundCapture
{
public:
    QtSoundCapture(const QAudioDevice &device, const QAudioFormat &format)
        : m_device(device)
        , m_format(format)
        , m_source(device, format)
    { }
    ~QtSoundCapture() override { m_source.stop(); }

    bool start(QString &reason)
    {
        m_io = m_source.start();
        if (m_io && m_source.error() == QAudio::NoError)
            return true;
        reason = QCoreApplication::translate("SoundDevices", "the input \"%1\" cannot be opened.")
                     .arg(m_device.description());
        return false;
    }

    int sampleRate() const override { return m_format.sampleRate(); }

    void take(std::vector<float> &samples) override
    {
        // Stopping the source ends the device it hands the samples through.
        if (!m_io || m_source.state() == QAudio::StoppedState)
            return;
        const QByteArray bytes = m_io->readAll();
        const size_t before = samples.size();
        if (m_format.sampleFormat() == QAudioFormat::Float) {
            samples.resize(before + size_t(bytes.size()) / sizeof(float));
            std::memcpy(samples.data() + before, bytes.constData(),
                        (samples.size() - before) * sizeof(float));
        } else {
            const size_t count = size_t(bytes.size()) / sizeof(qint16);
            samples.resize(before + count);
            for (size_t i = 0; i < count; ++i) {
                qint16 value;
                std::memcpy(&value, bytes.constData() + i * sizeof(qint16), sizeof(qint16));
                samples[before + i] = float(value) / 32768.0f;
            }
        }
    }

    QString failure() override
    {
        // A source taken away leaves the stream running without sound and without an error; only
        // the device list tells.
        if (!isListed(m_device.id()))
            return QCoreApplication::translate(
                       "SoundDevices",
                       "the input \"%1\" is gone: it was unplugged, switched off or taken away by the "
                       "sound system.")
                .arg(m_device.description());
        const QAudio::Error error = m_source.error();
        if (m_source.state() == QAudio::StoppedState
            || (error != QAudio::NoError && error != QAudio::UnderrunError))
            return QCoreApplication::translate("SoundDevices", "the input \"%1\" stopped sending sound.")
                .arg(m_device.description());
        return {};
    }

private:
    QAudioDevice m_device;
    QAudioFormat m_format;
    QAudioSource m_source;
    QIODevice *m_io = nullptr; // the source's own, ended by its stop
};

class QtSoundStream final : public SoundStream
{
public:
    QtSoundStream(const QAudioDevice &device, const QAudioFormat &format)
        : m_format(format)
        , m_sink(device, format)
    {
        // Enough to ride over a busy moment of the user-interface thread, which hands the sound over.
        m_sink.setBufferSize(format.bytesForDuration(400'000));
    }
    ~QtSoundStream() override { m_sink.stop(); }

    bool start(QString &reason)
    {
        m_io = m_sink.start();
        if (m_io && m_sink.error() == QAudio::NoError)
            return true;
        reason = QCoreApplication::translate("SoundDevices", "the PC's audio output cannot be opened.");
        return false;
    }

    qint64 room() override
    {
        return m_sink.state() == QAudio::StoppedState ? 0 : m_sink.bytesFree() / qint64(sizeof(float));
    }

    void write(const float *samples, qint64 count) override
    {
        m_io->write(reinterpret_cast<const char *>(samples), count * qint64(sizeof(float)));
    }

    qint64 played() override { return m_sink.processedUSecs() * m_format.sampleRate() / 1'000'000; }

    qint64 latency() override { return m_sink.bufferSize() / qint64(sizeof(float)); }

    QString failure() override
    {
        const QAudio::Error error = m_sink.error();
        if (error != QAudio::NoError && error != QAudio::UnderrunError)
            return QCoreApplication::translate("SoundDevices", "the PC's audio output stopped playing.");
        return {};
    }

private:
    QAudioFormat m_format;
    QAudioSink m_sink;
    QIODevice *m_io = nullptr; // the sink's own, ended by its stop
};

// The sound system's own complaint when it cannot reach its server ("pa_context_connect() failed")
// means nothing to an operator; the caller says what is missing in the program's own words.
void quietly(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (type == QtDebugMsg || type == QtInfoMsg || type == QtWarningMsg)
        return;
    qt_message_output(type, context, message);
}

QAudioDevice defaultOutput()
{
    const QtMessageHandler before = qInstallMessageHandler(quietly);
    const QAudioDevice device = QMediaDevices::defaultAudioOutput();
    qInstallMessageHandler(before);
    return device;
}

} // namespace

bool hasSoundOutput()
{
    return !QMediaDevices::audioOutputs().isEmpty();
}

QList<SoundInput> soundInputs(QString &)
{
    const QByteArray standard = QMediaDevices::defaultAudioInput().id();
    QList<SoundInput> inputs;
    for (const QAudioDevice &device : QMediaDevices::audioInputs())
        inputs.append({device.id(), device.description(), device.id() == standard});
    return inputs;
}

std::unique_ptr<SoundCapture> startSoundCapture(const QByteArray &id, QString &reason)
{
    const QList<QAudioDevice> inputs = QMediaDevices::audioInputs();
    const auto found = std::find_if(inputs.begin(), inputs.end(),
                                    [&](const QAudioDevice &input) { return input.id() == id; });
    if (found == inputs.end()) {
        reason = QCoreApplication::translate("SoundDevices", "the input is not there any more.");
        return nullptr;
    }
    // Mono at the input's own rate; floats where it gives them, keeping what lies past full scale.
    QAudioFormat format;
    format.setSampleRate(found->preferredFormat().sampleRate());
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Float);
    if (!found->isFormatSupported(format))
        format.setSampleFormat(QAudioFormat::Int16);
    if (!found->isFormatSupported(format)) {
        reason = QCoreApplication::translate("SoundDevices", "the input \"%1\" does not record in mono.")
                     .arg(found->description());
        return nullptr;
    }
    auto capture = std::make_unique<QtSoundCapture>(*found, format);
    if (!capture->start(reason))
        return nullptr;
    return capture;
}

std::unique_ptr<SoundStream> openSoundStream(int sampleRate, QString &reason)
{
    const QAudioDevice device = defaultOutput();
    if (device.isNull()) {
        reason = QCoreApplication::translate("SoundDevices", "this PC has no audio output.");
        return nullptr;
    }
    QAudioFormat format;
    format.setSampleRate(sampleRate);
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Float);
    if (!device.isFormatSupported(format)) {
        reason = QCoreApplication::translate("SoundDevices", "the PC's audio output does not take %1 Hz.")
                     .arg(sampleRate);
        return nullptr;
    }
    auto stream = std::make_unique<QtSoundStream>(device, format);
    if (!stream->start(reason))
        return nullptr;
    return stream;
}
