#pragma once

#include <QObject>
#include <QString>

#include <memory>

class SharedState;
struct DecodedAudio;

/// Where the sentence dialog finds a named sentence's sound: the work folder first (chosen but not
/// applied yet), then the project's sentence folder, then the sentence folder. Empty when none.
QString sentenceSoundFile(const SharedState &state, const QString &name);

/// Plays one sentence on the PC's default audio output, so that the operator hears what the card
/// will play. The sound system behind it is chosen when the program is built: PortAudio or Qt
/// Multimedia (DQ480_SOUND_OUTPUT).
class SentencePlayer : public QObject
{
    Q_OBJECT

public:
    explicit SentencePlayer(QObject *parent = nullptr);
    ~SentencePlayer() override;

    /// True when the PC has an audio output to play on.
    static bool hasOutput();

    /// Decodes the file and starts playing it, stopping what played before. False with `error`.
    bool play(const QString &path, QString &error);
    void stop();

private:
    friend class SentenceOutputPlugin; // hands the output on to the desktop program

    // The sound system's side of one playing sentence; ending it stops the sound.
    struct Output;
    struct OutputEnd
    {
        void operator()(Output *output) const;
    };
    using OutputHandle = std::unique_ptr<Output, OutputEnd>;

    /// Starts the decoded sound on the default output; null with `reason` when it cannot.
    static OutputHandle startOutput(const DecodedAudio &audio, QString &reason);

    OutputHandle m_output;
};
