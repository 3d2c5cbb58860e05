#include "audio/ProgramPlayer.h"

#include "setting/SettingData.h"

ProgramPlayer::ProgramPlayer(QObject *parent)
    : QObject(parent)
{
    connect(&m_output, &StreamPlayer::progressed, this, &ProgramPlayer::heard);
    connect(&m_output, &StreamPlayer::finished, this, &ProgramPlayer::ended);
}

ProgramPlayer::~ProgramPlayer() = default;

bool ProgramPlayer::play(const SettingData &data, int program, const QStringList &folders, QString &error)
{
    return play(std::make_unique<ProgramSound>(data, program, folders), error);
}

bool ProgramPlayer::play(std::unique_ptr<ProgramSound> sound, QString &error)
{
    stop();
    m_skipped = sound->skipped();
    m_problems.clear();
    m_passes = sound->passes();
    m_stepTexts.clear();
    for (int step = 0; step < SettingData::StepsPerProgram; ++step)
        if (const QString text = sound->stepText(step); !text.isEmpty())
            m_stepTexts.insert(step, text);
    m_marks.clear();
    m_pulled = 0;
    const int rate = sound->sampleRate();
    m_sound = std::move(sound);
    if (m_output.play(
            rate, [this](float *out, qint64 frames) { return pull(out, frames); }, error))
        return true;
    m_sound.reset();
    return false;
}

void ProgramPlayer::stop()
{
    m_output.stop();
}

QString ProgramPlayer::stepText(int step) const
{
    return m_stepTexts.value(step);
}

qint64 ProgramPlayer::pull(float *out, qint64 frames)
{
    const qint64 got = m_sound->read(out, frames);
    if (got > 0) {
        m_pulled += got;
        m_marks.push_back({m_pulled, m_sound->currentStep(), m_sound->currentPass()});
    }
    return got;
}

void ProgramPlayer::heard(qint64 samples)
{
    while (m_marks.size() > 1 && m_marks.front().end <= samples)
        m_marks.pop_front();
    if (!m_marks.empty())
        emit progressed(m_marks.front().step, m_marks.front().pass, double(samples) / m_sound->sampleRate());
}

void ProgramPlayer::ended(const QString &problem)
{
    m_problems = m_sound->problems();
    m_sound.reset();
    emit finished(problem);
}
