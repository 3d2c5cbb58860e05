#pragma once

#include "SettingData.h"

/// True when a sentence slot from `firstSlot` on names a file.
bool sentenceSlotsUsedFrom(const SettingData &data, int firstSlot);

/// Empties every sentence slot from `firstSlot` on: file name, control text, sort number.
void clearSentenceSlotsFrom(SettingData &data, int firstSlot);

/// Copies one program (its steps and every per-program value) over another; 0-based numbers.
void copyProgram(SettingData &data, int from, int to);
