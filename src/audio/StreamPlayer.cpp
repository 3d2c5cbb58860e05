#include "audio/StreamPlayer.h"

#include "audio/SoundDevices.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int FeedMs = 20;
// Handed over in pieces this small, what is heard is known to within their length.
constexpr qint64 PieceSamples = 1024;

} // namespace

StreamPlayer::StreamPlayer(QObject *parent)
    : QObject(parent)
{
    connect(&m_feed, &QTimer::timeout, this, &StreamPlayer::feed);
}

StreamPlayer::~StreamPlayer() = default;

bool StreamPlayer::play(int sampleRate, Pull pull, QString &error)
{
    stop();
    m_stream = openSoundStream(sampleRate, error);
    if (!m_stream)
        return false;
    m_pull = std::move(pull);
    m_rate = sampleRate;
    m_written = 0;
    m_soundEnd = -1;
    m_tail = 0;
    m_sinceEnd.invalidate();
    feed();
    m_feed.start(FeedMs);
    return true;
}

void StreamPlayer::stop()
{
    if (m_stream)
        end(QString());
}

void StreamPlayer::end(const QString &problem)
{
    m_feed.stop();
    m_stream.reset();
    m_pull = nullptr;
    emit finished(problem);
}

void StreamPlayer::feed()
{
    if (const QString problem = m_stream->failure(); !problem.isEmpty()) {
        end(problem);
        return;
    }
    std::vector<float> piece(PieceSamples);
    for (qint64 room = m_stream->room(); room > 0;) {
        const qint64 wanted = std::min(room, PieceSamples);
        qint64 got = 0;
        if (m_soundEnd < 0) {
            got = m_pull(piece.data(), wanted);
            if (got == 0) {
                m_soundEnd = m_written;
                // The output takes sound before it plays it: silence after the end lets the end be
                // heard before the output closes.
                m_tail = m_stream->latency() + m_rate / 4;
                continue;
            }
        } else {
            got = std::min(wanted, m_tail);
            std::fill_n(piece.data(), got, 0.0f);
            m_tail -= got;
            if (got == 0)
                break;
            if (m_tail == 0)
                m_sinceEnd.start();
        }
        m_stream->write(piece.data(), got);
        m_written += got;
        room -= got;
    }

    const qint64 heard = m_stream->played();
    emit progressed(m_soundEnd >= 0 ? std::min(heard, m_soundEnd) : heard);
    if (!m_stream) // stopped by whoever heard it
        return;
    // The output's count is in its own time units: the last few samples may never show in it. An
    // output that stops counting ends the playing once it has had time enough to play the rest.
    const qint64 rest = m_written - heard;
    if (m_sinceEnd.isValid() && (rest <= m_rate / 50 || m_sinceEnd.elapsed() > 2000 + rest * 1000 / m_rate))
        end(QString());
}
