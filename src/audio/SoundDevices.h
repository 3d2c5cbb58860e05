#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

#include <memory>
#include <vector>

/// One of the PC's audio inputs, as the sound system names it.
struct SoundInput
{
    QByteArray id;
    QString description; // "Built-in Audio Analog Stereo"
    bool isDefault = false; // the input the system records from unless told otherwise
};

/// An input being recorded: mono samples at the input's rate, taken by whoever records them on the
/// user-interface thread. Ending the object stops the recording.
class SoundCapture
{
public:
    virtual ~SoundCapture() = default;
    virtual int sampleRate() const = 0;
    /// Appends the samples that came in since the last call.
    virtual void take(std::vector<float> &samples) = 0;
    /// Why the input stopped sending sound, in the operator's words; empty while it works.
    virtual QString failure() = 0;
};

/// A sound played on the PC's default output as it is made: mono samples are handed over on the
/// user-interface thread, a little ahead of the output, and played in order. Ending the object
/// stops the sound at once.
class SoundStream
{
public:
    virtual ~SoundStream() = default;
    /// Samples the output takes now without waiting.
    virtual qint64 room() = 0;
    virtual void write(const float *samples, qint64 count) = 0;
    /// Samples the output has taken from what was written, to play them.
    virtual qint64 played() = 0;
    /// Samples the output holds between taking and playing them: silence this long after the sound
    /// lets its end be heard before the output is closed.
    virtual qint64 latency() = 0;
    /// Why the output stopped playing, in the operator's words; empty while it works.
    virtual QString failure() = 0;
};

// The sound system (Qt Multimedia or PortAudio, as the build chose) plays every sound through a
// stream and records takes; the desktop program reaches it through its playback plugin.

/// True when the PC has an audio output to play on.
bool hasSoundOutput();

/// The PC's audio inputs. Empty with `error` when the sound system cannot be reached; empty
/// without one when the PC has none.
QList<SoundInput> soundInputs(QString &error);

/// Starts recording from input `id`; null with `reason` when it cannot.
std::unique_ptr<SoundCapture> startSoundCapture(const QByteArray &id, QString &reason);

/// Opens the default output for mono sound at `sampleRate`; null with `reason` when it cannot.
std::unique_ptr<SoundStream> openSoundStream(int sampleRate, QString &reason);
