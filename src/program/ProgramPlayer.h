#pragma once

#include "audio/ProgramSound.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QStringList>
#include <QTimer>

#include <deque>
#include <memory>

class SoundStream;
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
    /// Stops the sound at once.
    void stop();
    bool isPlaying() const { return bool(m_stream); }
    /// The sentence steps that do not sound and are skipped, of the program playing or played last.
    const QList<SkippedStep> &skipped() const { return m_skipped; }
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

    void feed();
    void end(const QString &problem);

    std::unique_ptr<ProgramSound> m_sound;
    std::unique_ptr<SoundStream> m_stream;
    QList<SkippedStep> m_skipped;
    QHash<int, QString> m_stepTexts;
    std::deque<Mark> m_marks;
    QTimer m_feed;
    int m_passes = 1;
    qint64 m_written = 0;
    qint64 m_soundEnd = -1; // once the sound has given its last sample
    qint64 m_tail = 0; // silence still to hand over after it
    QElapsedTimer m_sinceEnd; // from the moment the last silence was handed over
};
