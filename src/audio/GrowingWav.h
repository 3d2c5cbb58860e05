#pragma once

#include <QFile>
#include <QString>

/// A recording written as it comes in, into a WAV file of mono 32-bit float samples whose header
/// follows every append: whatever stops the recording (the operator, a lost input, a full disk, the
/// program's end), the file holds a whole WAV of the sound that came in before. It is the
/// recorder's scratch file; what the operator keeps is the sentence made from it.
class GrowingWav
{
public:
    /// Starts the file at `path` anew, replacing one there. False with `error` naming the file.
    bool open(const QString &path, int sampleRate, QString &error);
    /// False with `error` naming the file and the reason; what came before stays readable.
    bool append(const float *samples, qint64 count, QString &error);
    /// Closes the file; false with `error` when its last bytes did not reach the system.
    bool close(QString &error);
    qint64 frames() const { return m_frames; }

private:
    bool fail(QString &error);

    QFile m_file;
    int m_rate = 0;
    qint64 m_frames = 0;
};
