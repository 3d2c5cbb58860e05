#pragma once

#include <QHash>
#include <QList>
#include <QString>
#include <QStringList>

#include <algorithm>
#include <memory>
#include <vector>

struct SettingData;

/// How often a program's steps play and what lies between two passes, as the device reads the
/// program's method, repeat count and intervals.
struct ProgramRepeat
{
    int passes = 1; // 0: until stopped
    double intervalSeconds = 0.0; // silence between two passes
};

/// Continuous and Single-Program play their steps once; Repeat plays them the stored count of times
/// with the stored repeat interval between them, and until stopped for count 0; Endless plays them
/// until stopped with its play interval between them.
ProgramRepeat programRepeat(const SettingData &data, int program);

/// A sentence step that cannot sound and is skipped.
struct SkippedStep
{
    int step = 0; // 0-127
    QString shown; // as the step window shows it: "A004"
    QString reason; // in the operator's words, naming the file
};

/// The sound of a program (`program` 0-63) as the device plays it from the card: each step's
/// sentence decoded in order, back to back, each wait as silence of its length, and the passes with
/// their interval between them, as mono samples at one rate. It is pulled piece by piece, so that
/// a program playing until stopped can be heard for as long as wanted and a long one is never
/// held in memory whole. One pass is as long as `programPlayingTime` says, to the sample.
class ProgramSound
{
public:
    /// `passes` limits how many passes play (0: as the program says); a program that plays until
    /// stopped ends after that many.
    ProgramSound(const SettingData &data, int program, const QStringList &folders, int passes = 0);
    ~ProgramSound();
    ProgramSound(const ProgramSound &) = delete;
    ProgramSound &operator=(const ProgramSound &) = delete;

    /// The rate of the sound: the highest of its sentences' rates, 32 kHz when it has none.
    int sampleRate() const { return m_rate; }
    /// The sentence steps skipped, each once per step, in step order.
    const QList<SkippedStep> &skipped() const { return m_skipped; }
    /// Passes that will play; 0 when it plays until stopped.
    int passes() const { return m_passes; }
    double intervalSeconds() const;
    qint64 passFrames() const { return m_passFrames; }
    /// The whole length in samples; -1 when it plays until stopped.
    qint64 totalFrames() const;

    /// Fills `out` with up to `frames` samples and returns how many; 0 once the sound has ended.
    qint64 read(float *out, qint64 frames);
    /// The step (0-127) the last sample given belongs to; -1 between passes or before the start.
    int currentStep() const { return m_currentStep; }
    /// How the step window shows step `step` ("A001", "M2.5"); empty for a step that does not sound.
    QString stepText(int step) const;
    /// The pass (from 1) the last sample given belongs to.
    int currentPass() const { return m_passes == 0 ? m_pass + 1 : std::min(m_pass + 1, m_passes); }
    /// Sentences that were found but could not be decoded while playing: their time is silent.
    const QStringList &problems() const { return m_problems; }

private:
    struct Piece
    {
        int step = -1;
        QString shown;
        QString path; // empty for a wait
        qint64 frames = 0;
    };
    using Samples = std::shared_ptr<const std::vector<float>>;

    Samples decoded(const Piece &piece);

    int m_rate = 32000;
    int m_passes = 1;
    qint64 m_intervalFrames = 0;
    qint64 m_passFrames = 0;
    std::vector<Piece> m_pieces;
    QList<SkippedStep> m_skipped;
    QStringList m_problems;
    QHash<QString, Samples> m_cache;
    qint64 m_cachedSamples = 0;

    // Where the next sample comes from: the pass, the piece (the size of m_pieces for the interval
    // after the pass) and the offset in it.
    int m_pass = 0;
    size_t m_piece = 0;
    qint64 m_offset = 0;
    int m_currentStep = -1;
    Samples m_playing; // the current sentence's samples
};
