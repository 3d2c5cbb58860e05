#include "program/ProgramPlayer.h"

#include "audio/SoundDevices.h"
#include "setting/SettingData.h"

#include <algorithm>
#include <vector>

namespace {

constexpr int FeedMs = 20;
// Handed over in pieces this small, the step heard is known to within their length.
constexpr qint64 PieceSamples = 1024;

} // namespace

ProgramPlayer::ProgramPlayer(QObject *parent)
    : QObject(parent)
{
    connect(&m_feed, &QTimer::timeout, this, &ProgramPlayer::feed);
}

ProgramPlayer::~ProgramPlayer() = default;

bool ProgramPlayer::play(const SettingData &data, int program, const QStringList &folders, QString &error)
{
    stop();
    auto sound = std::make_unique<ProgramSound>(data, program, folders);
    m_skipped = sound->skipped();
    m_passes = sound->passes();
    m_stepTexts.clear();
    for (int step = 0; step < int(data.ProgramData[program].size()); ++step)
        if (const QString text = sound->stepText(step); !text.isEmpty())
            m_stepTexts.insert(step, text);
    m_stream = openSoundStream(sound->sampleRate(), error);
    if (!m_stream)
        return false;
    m_sound = std::move(sound);
    m_marks.clear();
    m_written = 0;
    m_soundEnd = -1;
    m_tail = 0;
    m_sinceEnd.invalidate();
    feed();
    m_feed.start(FeedMs);
    return true;
}

void ProgramPlayer::stop()
{
    if (!m_stream)
        return;
    m_feed.stop();
    m_stream.reset();
    m_sound.reset();
    emit finished(QString());
}

QString ProgramPlayer::stepText(int step) const
{
    return m_stepTexts.value(step);
}

void ProgramPlayer::end(const QString &problem)
{
    m_feed.stop();
    m_stream.reset();
    m_sound.reset();
    emit finished(problem);
}

void ProgramPlayer::feed()
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
            got = m_sound->read(piece.data(), wanted);
            if (got == 0) {
                m_soundEnd = m_written;
                // The output takes sound before it plays it: silence after the end lets the end be
                // heard before the output closes.
                m_tail = m_stream->latency() + m_sound->sampleRate() / 4;
                continue;
            }
            m_marks.push_back({m_written + got, m_sound->currentStep(), m_sound->currentPass()});
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
    while (m_marks.size() > 1 && m_marks.front().end <= heard)
        m_marks.pop_front();
    const double rate = m_sound->sampleRate();
    const qint64 played = m_soundEnd >= 0 ? std::min(heard, m_soundEnd) : heard;
    if (!m_marks.empty())
        emit progressed(m_marks.front().step, m_marks.front().pass, double(played) / rate);
    // The output's count is in its own time units: the last few samples may never show in it. An
    // output that stops counting ends the playing once it has had time enough to play the rest.
    const qint64 rest = m_written - heard;
    if (m_sinceEnd.isValid()
        && (rest <= m_sound->sampleRate() / 50
            || m_sinceEnd.elapsed() > 2000 + rest * 1000 / m_sound->sampleRate()))
        end(QString());
}
