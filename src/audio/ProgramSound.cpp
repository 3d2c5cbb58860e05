#include "audio/ProgramSound.h"

#include "audio/AudioDecode.h"
#include "audio/ProgramDuration.h"
#include "audio/Resample.h"
#include "setting/ProgramOptionWord.h"
#include "setting/RegularFile.h"
#include "setting/SettingData.h"

#include <QCoreApplication>
#include <QDir>

#include <algorithm>

namespace {

// Decoded sentences kept for the next pass: about 80 MB of samples.
constexpr qint64 CachedSamplesAtMost = 20'000'000;

// Why a found sentence file cannot sound; empty when it can.
QString fileProblem(const QString &path)
{
    const QString shown = QDir::toNativeSeparators(path);
    switch (pathKind(path)) {
    case PathKind::Other:
        return QCoreApplication::translate("ProgramSound", "%1 is a pipe or a device, not a file.")
            .arg(shown);
    case PathKind::Folder:
        return QCoreApplication::translate("ProgramSound", "%1 is a folder, not a file.").arg(shown);
    case PathKind::Missing:
        return QCoreApplication::translate("ProgramSound", "%1 cannot be read: there is no such file.")
            .arg(shown);
    case PathKind::File:
        break;
    }
    return QCoreApplication::translate("ProgramSound", "%1 holds no MPEG audio.").arg(shown);
}

} // namespace

ProgramRepeat programRepeat(const SettingData &data, int program)
{
    namespace Word = ProgramOptionWord;
    const qint32 option = data.ProgramOption[program];
    ProgramRepeat repeat;
    switch (Word::methodOf(option)) {
    case Word::Repeat: {
        repeat.passes = std::max<int>(data.RepeatCount[program], 0);
        const int interval = data.RepeatInterval[program];
        // 1-5 are tens of seconds, 6 and up minutes over five (6 is 60 s on both scales).
        repeat.intervalSeconds = interval <= 0 ? 0.0
            : interval <= 5                    ? interval * 10.0
                                               : (interval - 5) * 60.0;
        break;
    }
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
        const QString &step = steps[size_t(i)];
        if (const double wait = stepWaitSeconds(step); wait >= 0.0) {
            const QString tenths = QString::number(wait, 'f', 1);
            found.push_back({i, QLatin1Char('M') + tenths, QString(), wait, {}});
            continue;
        }
        // Neither a sentence nor a wait: the device has nothing to play there, nor has the playing
        // time anything to count.
        if (step.size() != 4 || step[0] != QLatin1Char('0'))
            continue;
        const QString shown = QLatin1Char('A') + step.mid(1);
        const int slot = step.mid(1).toInt() - 1;
        const QString name = slot >= 0 && slot < SentenceTableSize::Largest
            ? data.SentenceFileName[size_t(slot)]
            : QString();
        const QString path = times.file(name);
        QString reason;
        std::optional<MpegLength> length;
        if (name.isEmpty())
            reason = QCoreApplication::translate("ProgramSound",
                                                 "sentence %1 has no file in the sentence table.")
                         .arg(step.mid(1));
        else if (path.isEmpty())
            reason = QCoreApplication::translate(
                         "ProgramSound",
                         "%1 is in none of the work folder, the project's folder and the sentence folder.")
                         .arg(name);
        else if (length = mpegFileLength(path); !length)
            reason = fileProblem(path);
        if (!reason.isEmpty()) {
            m_skipped.append({i, shown, reason});
            continue;
        }
        found.push_back({i, shown, path, 0.0, *length});
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
