#pragma once

#include "audio/AudioDecode.h"
#include "audio/GrowingWav.h"

#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <QTimer>

#include <memory>
#include <vector>

class SoundCapture;

/// Records takes from one of the PC's inputs into a WAV file, for the recorder window. A take is
/// as long as the time between start and stop: sound systems hand recorded sound over in pieces,
/// late or ahead, so what came in past that time is left out and what the input still holds at
/// stop is waited for. A take stops by itself at the longest recording an import takes, when the
/// input is lost or when its file cannot be written; what was recorded stays in the file.
class TakeRecorder : public QObject
{
    Q_OBJECT

public:
    /// Takes are recorded into `path`; each new one replaces the last, and the last is removed with
    /// the recorder.
    explicit TakeRecorder(const QString &path, QObject *parent = nullptr);
    ~TakeRecorder() override;

    /// The longest take, in seconds.
    void setLongest(double seconds) { m_longest = seconds; }
    /// Starts a new take from input `id`. False with `error` saying why, in the operator's words.
    bool start(const QByteArray &id, QString &error);
    /// Ends the take at this moment; `finished` follows once the input has handed over its sound.
    void stop();
    /// From start until the take is closed.
    bool isRecording() const { return bool(m_capture); }
    /// True once the file holds a closed take with sound.
    bool hasTake() const { return m_kept; }
    /// The take's length so far.
    double seconds() const;
    const QString &path() const { return m_path; }
    /// Removes the take's file.
    void discard();
    /// Stops recording without a word and removes the take's file.
    void abandon();

signals:
    /// The loudest sample that came in since the last signal, in dBFS, and whether the take has
    /// reached full scale.
    void levelChanged(double peakDb, bool clipped);
    void elapsedChanged(double seconds);
    /// The take is closed. `message` says why when it was not the operator who stopped it.
    void finished(const QString &message);

private:
    void poll();
    void close(const QString &message);
    QString stoppedMessage(const QString &reason) const;

    QString m_path;
    double m_longest = LongestRecordingSeconds;
    std::unique_ptr<SoundCapture> m_capture;
    GrowingWav m_file;
    QTimer m_poll;
    QElapsedTimer m_clock;
    std::vector<float> m_waiting; // came in ahead of the clock
    int m_rate = 0;
    bool m_clipped = false;
    bool m_kept = false;
    qint64 m_endFrame = -1; // once stopping: where the take ends
    qint64 m_stopMs = 0;
    QString m_stopMessage;
};
