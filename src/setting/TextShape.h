#pragma once

#include <QByteArrayView>
#include <QString>

/// What a file that another program saved may be instead of a setting file's text: one byte a
/// character in a code page, lines ended by CR LF.
enum class TextShape {
    Plain, // nothing that tells it apart; the reader judges it
    Utf16, // two bytes a character
    Utf8WithMark, // begins with the UTF-8 byte order mark EF BB BF
    CrOnlyLines, // several lines, each ended by CR alone (old Macintosh)
};

TextShape textShape(QByteArrayView bytes);

/// Says what the file is and how to make a setting file of it; empty for `TextShape::Plain`.
QString textShapeMessage(TextShape shape, const QString &path, const QString &codePage);
