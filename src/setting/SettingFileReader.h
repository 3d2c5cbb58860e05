#pragma once

#include "setting/SettingData.h"

#include <QByteArrayView>
#include <QString>

class SharedState;

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
