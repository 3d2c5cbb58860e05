#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>

#include <optional>

class SharedState;
class TextEncoding;

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

/// A line of a file whose bytes the code page does not read back as they are: saved again, they
/// would change.
struct ChangedLine
{
    int number = 0; // counted from 1
    QString key; // the line's key, or that of the entry it continues; empty when there is none
    QByteArray bytes; // the line's value (without key and final comma)
    qsizetype at = 0; // its first byte in it that would change
};

/// The first line of the file that would not be written back byte for byte; `text` is the file
/// decoded in `encoding`, as it was read.
std::optional<ChangedLine> findChangedLine(QByteArrayView file, QStringView text,
                                           const TextEncoding &encoding);

/// "Line 2 of p.stf (CREATOR) holds bytes that the code page CP932 cannot read as they are..."
QString changedLineMessage(const ChangedLine &found, const QString &path, const QString &codePage);
