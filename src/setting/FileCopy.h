#pragma once

#include <QString>

/// Copies a file over any file of the destination's name. The copy is made beside the destination
/// and renamed over it at the end, so a failure (full disk, removed card) leaves the old
/// destination as it was. On failure `error` names the file and the reason.
bool copyFileReplacing(const QString &source, const QString &destination, QString &error);
