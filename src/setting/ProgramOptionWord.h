#pragma once

#include "setting/SettingData.h"

#include <QString>

#include <optional>

/// The bit fields of a program's option word.
namespace ProgramOptionWord {

constexpr qint32 BusyBit = 0x0001;
constexpr qint32 EndlessIntervalMask = 0x0038;
constexpr qint32 LevelMask = 0x0700;
constexpr qint32 MethodMask = 0xE000;
/// Everything below the method bits.
constexpr qint32 BelowMethod = 0x1FFF;

/// The four methods in the order of the method list.
enum Method { Continuous = 0, SingleProgram = 1, Repeat = 2, Endless = 3 };
constexpr qint32 MethodBits[] = {0x2000, 0x4000, 0x6000, 0xC000};

/// The name of a method in the list and in window captions ("Single-Program").
QString methodName(int method);

/// The list index of the word's method; Continuous for an unknown value.
int methodOf(qint32 option);

/// The word with its method bits replaced, always in the plain 16-bit form.
qint32 withMethod(qint32 option, int method);

/// Output level 1-8.
int outputLevel(qint32 option);
qint32 withOutputLevel(qint32 option, int level);

/// The Endless play interval in seconds, 0 (OFF) to 5; empty for a field value outside the scale.
std::optional<int> endlessSeconds(qint32 option);
qint32 withEndlessSeconds(qint32 option, int seconds);

/// Before Apply commits: a file-read Endless word (sign-extended) gets interval 0, count 0 and the
/// busy bit; a Continuous one interval 0, count 1 and the busy bit. All 64 programs.
void normaliseForApply(SettingData &data);

/// Before OK commits: Continuous as for Apply, Single-Program count 0, a window-chosen Endless
/// word interval 0. All 64 programs.
/// Kept on purpose: OK and Apply normalise the programs differently.
void normaliseForOk(SettingData &data);

} // namespace ProgramOptionWord
