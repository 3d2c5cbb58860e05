#pragma once

#include "setting/SharedState.h"

#include <QString>

#include <memory>

/// A shared state on a program folder of the test's choosing, with a fixed code page so tests do
/// not depend on the machine's DQ480_ENCODING.
std::unique_ptr<SharedState> makeTestState(const QString &appPath,
                                           const QString &encoding = QStringLiteral("CP932"));

/// Fills `used` sentence slots from slot 0 as the sentence dialog does (file S001.MP2, control
/// A001, sort number 1...) and switches the card to 512 sentences when `capacity` is 512.
void fillSentences(SettingData &data, int capacity, int used);

/// Gives every program `steps` steps, alternating sentence plays (0001...) and waits (2005, 2215).
void fillSteps(SettingData &data, int steps);

/// The largest project: 512 sentences, 64 programs of 128 steps, varied program settings.
void fillFullProject(SettingData &data);
