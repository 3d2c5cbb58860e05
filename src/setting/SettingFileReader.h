#pragma once

#include <QByteArrayView>

class SharedState;

/// Reads a setting file or a card control file into SettingBuffer, and sets SurveillanceFile and
/// SentencePath from it. True when at least one line was read and nothing was wrong. The caller
/// resets SettingBuffer before and commits it afterwards; after a rejection, what was read before
/// it stays in SettingBuffer.
bool ReadSettingFile(SharedState &state, QByteArrayView bytes);
