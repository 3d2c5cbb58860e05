#pragma once

#include <QString>
#include <QStringList>

/// The longest sentence name before ".MP2": the card control file keeps eight characters.
constexpr int LongestSentenceName = 8;

/// Why a name cannot name a sentence made from a recording, by the first rule it breaks.
enum class SentenceNameFault {
    None,
    Empty,
    TooLong, // more than eight characters before ".MP2"
    NotPlainAscii, // a blank, a control character or a letter outside ASCII
    FullStop, // the card's eight-and-three names hold none before ".MP2"
    ForbiddenCharacter, // one of \ / : * ? < > | , " ;
    DeviceName, // CON, PRN, AUX, NUL, COM1 to COM9, LPT1 to LPT9
};

/// The rule `name` (with or without ".MP2", any case) breaks as a sentence name.
SentenceNameFault sentenceNameFault(const QString &name);

/// True when `name` (with or without ".MP2", any case) can name a sentence made from a recording:
/// one to eight characters before the extension, printable ASCII without blanks or full stops,
/// nothing IsValidFileNameText refuses, and not a name Windows keeps for a device (CON, NUL...).
bool isFittingSentenceName(const QString &name);

/// The sentence file name for `name`: upper case with ".MP2" ("hello" and "Hello.mp2" give
/// "HELLO.MP2"). Only meaningful for a fitting name.
QString sentenceFileName(const QString &name);

/// The name a recording would get: its base name, upper case, with ".MP2".
QString sentenceFileNameForRecording(const QString &recordingPath);

/// A fitting name for a recording whose own name does not fit: letters and digits of its base
/// name (others dropped, blanks and punctuation become "_" between words), upper case, cut to eight
/// characters; "SENTENCE" when nothing is left. When the result is in `taken` (compared without
/// case), the end is replaced by a number ("GOODMOR2") until it is free.
QString proposeSentenceName(const QString &recordingPath, const QStringList &taken = {});
