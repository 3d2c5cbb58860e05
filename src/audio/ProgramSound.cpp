#include "audio/ProgramSound.h"

#include "audio/AudioDecode.h"
#include "audio/ProgramDuration.h"
#include "setting/ProgramOptionWord.h"
#include "setting/RepeatInterval.h"
#include "setting/SettingData.h"
#include "setting/StoredStep.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace {

// Decoded sentences kept for the next pass: about 80 MB of samples.
constexpr qint64 CachedSamplesAtMost = 20'000'000;

// Why a found sentence file cannot sound.
QString fileProblem(const QString &path)
{
    const QString shown = QDir::toNativeSeparators(path);
    if (const QString problem = recordingPathProblem(path); !problem.isEmpty())
        return QCoreApplication::translate("ProgramSound", "%1 cannot be played: %2").arg(shown, problem);
    return QCoreApplication::translate("ProgramSound", "%1 holds no MPEG audio.").arg(shown);
}

} // namespace

ProgramRepeat programRepeat(const SettingData &data, int program)
{
    namespace Word = ProgramOptionWord;
    const qint32 option = data.ProgramOption[program];
    ProgramRepeat repeat;
    switch (Word::methodOf(option)) {
    case Word::Repeat:
        repeat.passes = std::max<int>(data.RepeatCount[program], 0);
        repeat.intervalSeconds = repeatInterval(data.RepeatInterval[program]).seconds();
        break;
    case Word::Endless:
        repeat.passes = 0;
        repeat.intervalSeconds = Word::endlessSeconds(option).value_or(0);
        break;
    default:
        break;
    }
    return repeat;
}

ProgramSound::ProgramSound(const SettingData &data, int program, const QStringList &folders, int passes)
{
    SentenceTimes times(folders);
    struct Found
    {
        int step;
        QString shown;
        QString path;
        double seconds; // a wait's
        MpegLength length; // a sentence's
    };
    std::vector<Found> found;
    const auto &steps = data.ProgramData[program];
    for (int i = 0; i < int(steps.size()); ++i) {
        const StoredStep step = decodeStep(steps[size_t(i)]);
        if (step.kind == StoredStep::Kind::Wait) {
            found.push_back({i, step.shown, QString(), step.waitSeconds, {}});
            continue;
        }
        // No step: the device has nothing to play there, nor has the playing time anything to count.
        if (step.kind != StoredStep::Kind::Sentence)
            continue;
        const int slot = step.sentence - 1;
        const QString name = slot >= 0 && slot < SentenceTableSize::Largest
            ? data.SentenceFileName[size_t(slot)]
            : QString();
        const QString path = times.file(name);
        QString reason;
        std::optional<MpegLength> length;
        if (name.isEmpty())
            reason = QCoreApplication::translate("ProgramSound",
                                                 "sentence %1 has no file in the sentence table.")
                         .arg(step.shown.mid(1));
        else if (path.isEmpty())
            reason = QCoreApplication::translate(
                         "ProgramSound",
                         "%1 is in none of the work folder, the project's folder and the sentence folder.")
                         .arg(name);
        else if (length = mpegFileLength(path); !length)
            reason = fileProblem(path);
        if (!reason.isEmpty()) {
            m_skipped.append({i, step.shown, reason});
            continue;
        }
        found.push_back({i, step.shown, path, 0.0, *length});
    }
    int highest = 0;
    for (const Found &f : found)
        highest = std::max(highest, f.length.sampleRate);
    if (highest > 0)
        m_rate = highest;
    for (const Found &f : found) {
        const qint64 frames = f.path.isEmpty() ? qRound64(f.seconds * m_rate)
            : f.length.sampleRate == m_rate
            ? f.length.samples
            : qRound64(double(f.length.samples) * m_rate / f.length.sampleRate);
        m_pieces.push_back({f.step, f.shown, f.path, frames});
        m_passFrames += frames;
    }

    const ProgramRepeat repeat = programRepeat(data, program);
    m_passes = repeat.passes;
    if (passes > 0)
        m_passes = m_passes == 0 ? passes : std::min(m_passes, passes);
    m_intervalFrames = qRound64(repeat.intervalSeconds * m_rate);
    // Nothing to hear and nothing to wait: playing until stopped would give no sound for ever.
    if (m_passFrames == 0 && m_intervalFrames == 0)
        m_passes = 1;
}

ProgramSound::~ProgramSound() = default;

double ProgramSound::intervalSeconds() const
{
    return double(m_intervalFrames) / m_rate;
}

QString ProgramSound::stepText(int step) const
{
    const auto found = std::find_if(m_pieces.begin(), m_pieces.end(),
                                    [step](const Piece &piece) { return piece.step == step; });
    return found == m_pieces.end() ? QString() : found->shown;
}

qint64 ProgramSound::totalFrames() const
{
    if (m_passes == 0)
        return -1;
    return m_passes * m_passFrames + (m_passes - 1) * m_intervalFrames;
}

ProgramSound::Samples ProgramSound::decoded(const Piece &piece)
{
    if (const auto known = m_cache.constFind(piece.path); known != m_cache.constEnd())
        return *known;
    QString error;
    auto samples = std::make_shared<std::vector<float>>();
    if (!decodeMonoAt(piece.path, m_rate, *samples, error)) {
        m_problems << QCoreApplication::translate("ProgramSound",
                                                  "%1 plays as silence: %2 cannot be played: %3")
                          .arg(piece.shown, QDir::toNativeSeparators(piece.path), error);
        samples->clear();
    }
    // Its length is the one its frame headers promised, which the whole sound was counted with.
    samples->resize(size_t(piece.frames), 0.0f);
    if (m_cachedSamples + piece.frames > CachedSamplesAtMost) {
        m_cache.clear();
        m_cachedSamples = 0;
    }
    m_cache.insert(piece.path, samples);
    m_cachedSamples += piece.frames;
    return samples;
}

qint64 ProgramSound::read(float *out, qint64 frames)
{
    qint64 given = 0;
    while (given < frames && (m_passes == 0 || m_pass < m_passes)) {
        const bool interval = m_piece >= m_pieces.size();
        const qint64 length = interval ? m_intervalFrames : m_pieces[m_piece].frames;
        // The interval stands only between passes.
        const bool lastInterval = interval && m_passes != 0 && m_pass + 1 >= m_passes;
        if (m_offset >= length || lastInterval) {
            m_offset = 0;
            m_playing.reset();
            if (interval) {
                ++m_pass;
                m_piece = 0;
            } else {
                ++m_piece;
            }
            continue;
        }
        const qint64 count = std::min(frames - given, length - m_offset);
        const Piece *piece = interval ? nullptr : &m_pieces[m_piece];
        if (piece && !piece->path.isEmpty()) {
            if (!m_playing)
                m_playing = decoded(*piece);
            std::copy_n(m_playing->data() + m_offset, count, out + given);
        } else {
            std::fill_n(out + given, count, 0.0f);
        }
        m_currentStep = piece ? piece->step : -1;
        m_offset += count;
        given += count;
    }
    return given;
}
