#pragma once

#include "audio/StreamPlayer.h"

#include <QObject>
#include <QString>

#include <vector>

class SharedState;

/// Where the sentence dialog finds a named sentence's sound: the work folder first (chosen but not
/// applied yet), then the project's sentence folder, then the sentence folder. Empty when none.
QString sentenceSoundFile(const SharedState &state, const QString &name);

/// Plays one sentence (or a take) on the PC's default audio output, so that the operator hears what
/// the card will play.
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
    StreamPlayer m_output;
    std::vector<float> m_samples;
    size_t m_position = 0;
};
