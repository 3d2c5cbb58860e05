#pragma once

#include <QByteArray>

class SharedState;

/// The setting file of `Setting`: the five header lines (project texts, sentence folder, test tone
/// switch) followed by the body, CR LF line ends, in the state's code page.
QByteArray WriteSettingFile(const SharedState &state);

/// The card control file of `Setting`: the lines from "CARDNAME," on.
QByteArray WriteSettingBody(const SharedState &state);
