#pragma once

#include "setting/SentenceFolderIndex.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

struct SettingData;
class SharedState;

/// Where a named sentence's sound is looked for, in order: the work folder (chosen, not applied
/// yet), the project's sentence folder, the sentence folder.
QStringList sentenceSoundFolders(const SharedState &state);

/// The first file named `name` (any case) in `folders`; empty when none.
QString findSentenceSound(const QStringList &folders, const QString &name);

/// The playing times of named sentences, the folders listed once and each file scanned once.
class SentenceTimes
{
public:
    explicit SentenceTimes(const QStringList &folders);
    /// The first file of that name (any case) in the folders; empty when none.
    QString file(const QString &name) const;
    /// None when no folder holds the name or the file is no MPEG audio.
    std::optional<double> seconds(const QString &name);

private:
    std::vector<SentenceFolderIndex> m_folders;
    QHash<QString, std::optional<double>> m_known;
};

/// How long one pass of a program's steps plays.
struct ProgramDuration
{
    double seconds = 0.0; // sentences' playing times and waits
    /// Sentence steps whose file was not found (or is not MPEG audio), as the step window shows
    /// them ("A020"), each once.
    QStringList missing;
};

/// Adds up a program's steps (`program` 0-63): a sentence step ("0NNN") its sentence's playing
/// time, a wait step ("22XY" X.Y s, "200X" X s, "2NNN" NNN s) its time. Sentence 000 and names
/// without a file count as missing.
ProgramDuration programPlayingTime(const SettingData &data, int program, const QStringList &folders);
ProgramDuration programPlayingTime(const SettingData &data, int program, SentenceTimes &times);

/// "0:07.8", or "0:07.8 (A020 not found)"; past three missing steps, how many more.
QString programPlayingTimeText(const ProgramDuration &duration);
