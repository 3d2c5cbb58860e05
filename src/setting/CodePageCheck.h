#pragma once

#include <QString>

#include <optional>

class SharedState;

/// A text of the project that the setting file's code page cannot hold.
struct UnencodableText
{
    QString key; // the file's key, e.g. "PJNAME"
    QString text; // the whole text
    QString character; // its first character the code page has no bytes for
};

/// The first text of Setting (and the sentence folder) that would not come back from the file as
/// it is: a character the code page lacks is written as another, usually "?".
std::optional<UnencodableText> findUnencodableText(const SharedState &state);

/// "PJNAME "Café" holds "é" (U+00E9), which the code page CP932 cannot hold."
QString unencodableTextMessage(const UnencodableText &found, const QString &codePage);
