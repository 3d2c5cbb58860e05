// The tool's sound output through Qt Multimedia: the program's sound is pulled as the output needs
// it, so that a program playing until stopped plays on until the tool is stopped (Ctrl+C).

#include "cli/ProgramSpeaker.h"

#include "audio/ProgramSound.h"

#include <QAudioDevice>
#include <QAudioSink>
#include <QCoreApplication>
#include <QEventLoop>
#include <QIODevice>
#include <QMediaDevices>
#include <QTimer>
#include <QtEndian>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <vector>

namespace {

// Hands the output 16-bit samples from the program's sound; reads nothing once it has ended.
class SoundSource : public QIODevice
{
public:
    explicit SoundSource(ProgramSound &sound)
        : m_sound(sound)
    { }
    bool isSequential() const override { return true; }
    /// The output goes idle once it has taken the last bytes, not once it has played them: this
    /// much silence after the sound makes sure its end is heard before the output is closed.
    qint64 tailBytes = 0;
    std::atomic<int> step {-1};
    std::atomic<int> pass {1};

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 frames = std::min<qint64>(maxSize / 2, 16384);
        m_block.resize(size_t(frames));
        qint64 got = m_sound.read(m_block.data(), frames);
        if (got == 0 && tailBytes > 0) {
            got = std::min(frames, tailBytes / 2);
            std::fill_n(m_block.data(), got, 0.0f);
            tailBytes -= got * 2;
        }
        for (qint64 i = 0; i < got; ++i) {
            const float sample = std::nearbyint(std::clamp(m_block[size_t(i)], -1.0f, 1.0f) * 32767.0f);
            qToLittleEndian(qint16(sample), data + 2 * i);
        }
        step = m_sound.currentStep();
        pass = m_sound.currentPass();
        return got * 2;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    ProgramSound &m_sound;
    std::vector<float> m_block;
};

// The sound system's own complaint when it cannot reach its server ("pa_context_connect() failed")
// means nothing to an operator; the tool says what is missing in its own words.
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

bool playOnSpeaker(ProgramSound &sound, QTextStream &out, QString &error)
{
    const QAudioDevice device = defaultOutput();
    if (device.isNull()) {
        error = QStringLiteral("this PC has no audio output (or its sound system is not running): write "
                               "the sound with --render FILE.wav instead.");
        return false;
    }
    QAudioFormat format;
    format.setSampleRate(sound.sampleRate());
    format.setChannelCount(1);
    format.setSampleFormat(QAudioFormat::Int16);
    if (!device.isFormatSupported(format)) {
        error = QStringLiteral("the PC's audio output does not take %1 Hz mono: write the sound with "
                               "--render FILE.wav instead.")
                    .arg(sound.sampleRate());
        return false;
    }
    SoundSource source(sound);
    source.open(QIODevice::ReadOnly);
    QAudioSink sink(device, format);
    QEventLoop loop;
    bool failed = false;
    QObject::connect(&sink, &QAudioSink::stateChanged, &loop, [&](QAudio::State state) {
        // Idle: everything handed over has been heard and nothing more comes.
        if (state == QAudio::IdleState || state == QAudio::StoppedState) {
            failed = sink.error() != QAudio::NoError && sink.error() != QAudio::UnderrunError;
            loop.quit();
        }
    });
    int shownStep = -2;
    int shownPass = 0;
    QTimer progress;
    QObject::connect(&progress, &QTimer::timeout, &loop, [&] {
        const int step = source.step;
        const int pass = source.pass;
        if (step == shownStep && pass == shownPass)
            return;
        shownStep = step;
        shownPass = pass;
        out << "pass " << pass << ", "
            << (step < 0 ? QStringLiteral("interval")
                         : QStringLiteral("step %1: %2").arg(step + 1).arg(sound.stepText(step)))
            << "\n";
        out.flush();
    });
    progress.start(50);
    // The output's buffer is known once it runs; a sound shorter than it ends with a second.
    source.tailBytes = format.bytesForDuration(1000000);
    sink.start(&source);
    if (source.tailBytes > 0 && sink.bufferSize() > 0)
        source.tailBytes = sink.bufferSize() + format.bytesForDuration(250000);
    if (sink.error() != QAudio::NoError) {
        error = QStringLiteral("the PC's audio output cannot be opened.");
        return false;
    }
    loop.exec();
    if (failed) {
        error = QStringLiteral("the PC's audio output stopped playing.");
        return false;
    }
    return true;
}
