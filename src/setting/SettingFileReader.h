#pragma once

#include "setting/SettingData.h"

#include <QByteArrayView>
#include <QString>

class SharedState;
class TextEncoding;

/// What a setting file or card control file holds, read over the values reading started from.
struct SettingFileContents
{
    SettingData data;
    bool surveillanceFile = true;
    QString sentencePath; // SNTPATH as the file names it; empty when it names none
    QString problem; // set when a name that cannot be used (one that would leave its folder) rejects the file
    bool read = false; // at least one line was read and nothing was wrong
};

/// Reads the file's text (its bytes decoded in its code page) over `start` and the test-tone
/// switch as they stand; after a rejection, what was read before it stays in the data. Reads
/// nothing but the text.
SettingFileContents ReadSettingFileContents(QString text, SettingData start, bool surveillanceFile);

/// Puts what was read into SettingBuffer, SurveillanceFile and SentencePath; a sentence folder that
/// is not on this PC falls back to the program's folder.
void ApplySettingFileContents(SharedState &state, SettingFileContents contents);

/// Reads a setting file or a card control file into SettingBuffer, and sets SurveillanceFile and
/// SentencePath from it. True when at least one line was read and nothing was wrong. The caller
/// resets SettingBuffer before and commits it afterwards; after a rejection, what was read before
/// it stays in SettingBuffer.
bool ReadSettingFile(SharedState &state, QByteArrayView bytes);

/// The same; when the file is rejected for a name that cannot be used (a project name or a
/// sentence file name that would leave its folder), `problem` names the key and the value.
bool ReadSettingFile(SharedState &state, QByteArrayView bytes, QString &problem);

/// The same for a file whose bytes the caller has decoded in the state's code page already.
bool ReadDecodedSettingFile(SharedState &state, QString text, QString &problem);
