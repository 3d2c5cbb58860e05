#pragma once

#include <QJsonObject>

class SharedState;

/// Setting as JSON: one key per SettingData field (per-slot and per-program fields as arrays of 512
/// and 64, the steps as 64 arrays of 128), plus SentencePath and SurveillanceFile.
QJsonObject settingToJson(const SharedState &state);
