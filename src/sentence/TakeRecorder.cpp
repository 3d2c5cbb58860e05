#include "sentence/TakeRecorder.h"

#include "audio/AudioInfo.h"
#include "audio/SoundDevices.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cmath>

namespace {

constexpr int PollMs = 50;
// Sound systems hand recorded sound over in pieces of up to two seconds: an input that lags the
// clock by more than this has stopped sending.
constexpr qint64 LagLimitMs = 5000;
// How long the end of a take may still be on its way once the operator has stopped it.
constexpr qint64 DrainMs = 3000;
// A sample this loud was cut at full scale, or would have been.
constexpr float FullScale = 0.999f;
// What the meter shows for silence.
constexpr double QuietestDb = -90.0;

} // namespace

TakeRecorder::TakeRecorder(const QString &path, QObject *parent)
    : QObject(parent)
    , m_path(path)
{
    connect(&m_poll, &QTimer::timeout, this, &TakeRecorder::poll);
}

TakeRecorder::~TakeRecorder()
{
    abandon();
}

void TakeRecorder::abandon()
{
    m_poll.stop();
    m_capture.reset();
    m_waiting.clear();
    discard();
}

bool TakeRecorder::start(const QByteArray &id, QString &error)
{
    if (m_capture)
        return false;
    QString reason;
    std::unique_ptr<SoundCapture> capture = startSoundCapture(id, reason);
    if (!capture) {
        error = tr("Cannot record: %1").arg(reason);
        return false;
    }
    // The last take goes only once a new one can be recorded.
    QDir().mkpath(QFileInfo(m_path).path());
    m_kept = false;
    if (!m_file.open(m_path, capture->sampleRate(), error))
        return false;
    m_capture = std::move(capture);
    m_rate = m_capture->sampleRate();
    m_waiting.clear();
    m_clipped = false;
    m_endFrame = -1;
    m_stopMessage.clear();
    m_clock.start();
    m_poll.start(PollMs);
    emit elapsedChanged(0.0);
    return true;
}

void TakeRecorder::stop()
{
    if (!m_capture || m_endFrame >= 0)
        return;
    m_stopMs = m_clock.elapsed();
    m_endFrame = std::min(m_stopMs * m_rate / 1000, qint64(m_longest * m_rate));
    poll();
}

double TakeRecorder::seconds() const
{
    if (m_capture && m_endFrame < 0)
        return std::min(double(m_clock.elapsed()) / 1000.0, m_longest);
    return m_rate > 0 ? double(m_file.frames()) / m_rate : 0.0;
}

void TakeRecorder::discard()
{
    if (m_capture)
        return;
    QString ignored;
    m_file.close(ignored);
    QFile::remove(m_path);
    m_kept = false;
}

QString TakeRecorder::stoppedMessage(const QString &reason) const
{
    return tr("The recording stopped at %1: %2 The take so far is kept.")
        .arg(formatDuration(double(m_file.frames()) / m_rate), reason);
}

void TakeRecorder::poll()
{
    if (!m_capture)
        return;
    const size_t before = m_waiting.size();
    m_capture->take(m_waiting);
    if (m_waiting.size() > before) {
        float peak = 0.0f;
        for (size_t i = before; i < m_waiting.size(); ++i)
            peak = std::max(peak, std::abs(m_waiting[i]));
        m_clipped = m_clipped || peak >= FullScale;
        emit levelChanged(peak > 0.0f ? std::max(20.0 * std::log10(double(peak)), QuietestDb) : QuietestDb,
                          m_clipped);
    }
    const qint64 now = m_clock.elapsed();
    const qint64 longest = qint64(m_longest * m_rate);
    // Sound that came in ahead of the clock waits for it.
    const qint64 end = m_endFrame >= 0 ? m_endFrame : std::min(now * m_rate / 1000, longest);
    const qint64 count = std::clamp<qint64>(end - m_file.frames(), 0, qint64(m_waiting.size()));
    QString error;
    if (!m_file.append(m_waiting.data(), count, error)) {
        close(tr("The recording stopped at %1. %2. The take so far is kept.")
                  .arg(formatDuration(double(m_file.frames()) / m_rate), error));
        return;
    }
    m_waiting.erase(m_waiting.begin(), m_waiting.begin() + count);
    if (m_endFrame < 0 && now * m_rate / 1000 >= longest) {
        m_endFrame = longest;
        m_stopMs = now;
        m_stopMessage = tr("The recording stopped by itself at %1, the longest a sentence is made from.")
                            .arg(formatDuration(m_longest));
    }
    const QString failure = m_capture->failure();
    if (m_endFrame >= 0) {
        // Stopped: the take ends once its end is in, or the input has shown it never comes.
        if (m_file.frames() >= m_endFrame)
            close(m_stopMessage);
        else if (!failure.isEmpty())
            close(stoppedMessage(failure));
        else if (now - m_stopMs > DrainMs)
            close(stoppedMessage(tr("the input stopped sending sound.")));
        return;
    }
    emit elapsedChanged(seconds());
    if (!failure.isEmpty())
        close(stoppedMessage(failure));
    else if (now - m_file.frames() * 1000 / m_rate > LagLimitMs)
        close(stoppedMessage(tr("the input stopped sending sound.")));
}

void TakeRecorder::close(const QString &message)
{
    m_poll.stop();
    m_capture.reset();
    m_waiting.clear();
    QString error;
    const bool closed = m_file.close(error);
    m_kept = m_file.frames() > 0;
    emit elapsedChanged(seconds());
    emit finished(message.isEmpty() && !closed ? error : message);
}
