#pragma once

#include "setting/PcFileReplacement.h"

#include <QByteArray>
#include <QString>

/// The largest file taken as a setting file; a real one is well under 100 KB.
constexpr qint64 MaxSettingFileBytes = 16 * 1024 * 1024;

/// The bytes of a file, refusing anything larger than a setting file can be. On failure `error`
/// says why in the operator's words.
bool readFileBytes(const QString &path, QByteArray &bytes, QString &error,
                   qint64 limit = MaxSettingFileBytes);
