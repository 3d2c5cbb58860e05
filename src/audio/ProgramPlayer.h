#pragma once

#include "audio/ProgramSound.h"
#include "audio/StreamPlayer.h"

#include <QHash>
#include <QObject>
#include <QStringList>

#include <deque>
#include <memory>

struct SettingData;

/// Plays a program on the PC's default output as the device plays it from the card, and tells
/// which step is being heard. What it plays is taken from the setting data when it starts; it
/// never changes them.
class ProgramPlayer : public QObject
{
    Q_OBJECT

public:
    explicit ProgramPlayer(QObject *parent = nullptr);
    ~ProgramPlayer() override;

    /// Starts program `program` (0-63) of `data`, its sentences looked for in `folders`, stopping
    /// what played before. False with `error` in the operator's words when the output cannot play.
    bool play(const SettingData &data, int program, const QStringList &folders, QString &error);
    /// Starts a program's sound made beforehand.
    bool play(std::unique_ptr<ProgramSound> sound, QString &error);
    /// Stops the sound at once.
    void stop();
    bool isPlaying() const { return m_output.isPlaying(); }
    /// The sentence steps that do not sound and are skipped, of the program playing or played last.
    const QList<SkippedStep> &skipped() const { return m_skipped; }
    /// Sentences that were found but played as silence, of the program played last, once it ended.
    const QStringList &problems() const { return m_problems; }
    /// How the step window shows step `step`, of the program playing or played last.
    QString stepText(int step) const;
    /// Passes the program plays; 0 when it plays until stopped.
    int passes() const { return m_passes; }

signals:
    /// The step being heard (0-127; -1 between passes), its pass (from 1) and the time played so far.
    void progressed(int step, int pass, double seconds);
    /// The program has been heard to its end, or stopped; `problem` says why when the output failed.
    void finished(const QString &problem);

private:
    struct Mark
    {
        qint64 end; // samples handed over up to here belong to
        int step;
        int pass;
    };

    qint64 pull(float *out, qint64 frames);
    void heard(qint64 samples);
    void ended(const QString &problem);

    StreamPlayer m_output;
    std::unique_ptr<ProgramSound> m_sound;
    QList<SkippedStep> m_skipped;
    QStringList m_problems;
    QHash<int, QString> m_stepTexts;
    std::deque<Mark> m_marks;
    qint64 m_pulled = 0;
    int m_passes = 1;
};
