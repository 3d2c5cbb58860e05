#pragma once

#include <QString>

/// The 1 kHz test tone the card carries in front of the sentences when the surveillance switch is
/// on: "SIN1KHZ.MP2" in the program's folder.
QString testTonePath(const QString &appPath);

/// Makes the test tone when it is missing, so that a fresh install can write cards: a 1 kHz sine,
/// MPEG-1 Layer II, mono, 32 kHz, 64 kbit/s, three seconds. False (with `error`) when it cannot.
bool ensureTestTone(const QString &appPath, QString &error);
