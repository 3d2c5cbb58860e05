#pragma once

#include "setting/SettingData.h"

#include <QStringList>

class MsgBox;
class SharedState;

/// True when a sentence slot from `firstSlot` on names a file.
bool sentenceSlotsUsedFrom(const SettingData &data, int firstSlot);

/// Empties every sentence slot from `firstSlot` on: file name, control text, sort number.
void clearSentenceSlotsFrom(SettingData &data, int firstSlot);

/// Copies one program (its steps and every per-program value) over another; 0-based numbers.
void copyProgram(SettingData &data, int from, int to);

/// True when the 128 table would drop a named sentence from 129 on, in either copy.
bool sentencesAbove128(const SharedState &state);

/// Sets the table's size in both copies. The 128 table empties sentences 129 to 512 in both; the
/// committed attribute word follows the working copy's.
void setSentenceTableSize(SharedState &state, bool to512);

/// Copies program `from` over program `to` (1-64) in both copies, so that the copy counts as
/// committed at once.
void copyProgramInBothCopies(SharedState &state, int from, int to);

/// What the sentence table's Apply stores after committing: each named sentence of the committed
/// copy, from the work folder into the project's folder. Returns one line per file that was not
/// stored; the replace question of a read-only file goes to `msgBox`.
QStringList storeCommittedSentences(const SharedState &state, MsgBox &msgBox);
