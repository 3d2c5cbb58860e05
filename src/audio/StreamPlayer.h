#pragma once

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <functional>
#include <memory>

class SoundStream;

/// Plays a sound on the PC's default output as it is made: mono samples pulled a piece at a time,
/// a little ahead of the output, on the user-interface thread. Every player of the program (a
/// sentence, a take, a program in its window and in the command-line tool) plays through it.
class StreamPlayer : public QObject
{
    Q_OBJECT

public:
    /// Fills `out` with up to `frames` samples and returns how many; 0 once the sound has ended.
    using Pull = std::function<qint64(float *out, qint64 frames)>;

    explicit StreamPlayer(QObject *parent = nullptr);
    ~StreamPlayer() override;

    /// Starts the sound `pull` gives at `sampleRate`, stopping what played before. False with
    /// `error` in the operator's words when the output cannot play it.
    bool play(int sampleRate, Pull pull, QString &error);
    /// Stops the sound at once.
    void stop();
    bool isPlaying() const { return bool(m_stream); }

signals:
    /// The samples heard so far.
    void progressed(qint64 heard);
    /// The sound has been heard to its end, or stopped; `problem` says why when the output failed.
    void finished(const QString &problem);

private:
    void feed();
    void end(const QString &problem);

    Pull m_pull;
    std::unique_ptr<SoundStream> m_stream;
    QTimer m_feed;
    int m_rate = 0;
    qint64 m_written = 0;
    qint64 m_soundEnd = -1; // once the sound has given its last sample
    qint64 m_tail = 0; // silence still to hand over after it
    QElapsedTimer m_sinceEnd; // from the moment the last silence was handed over
};
