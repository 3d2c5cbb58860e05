#pragma once

#include <QByteArrayView>
#include <QString>
#include <QStringView>

/// The characters of a value quoted in a message at most: enough to recognise it, short enough
/// that a value holding a whole file (one without the line ends the reader looks for) still gives
/// a box that fits the screen.
constexpr qsizetype ExcerptLength = 40;

/// The text in double quotes for a message: control characters shown as \r, \n, \t or \xHH (a NUL
/// would end the shown text, a line end would stretch the box), and a text longer than
/// `ExcerptLength` cut, with its length told: "Station,\rCREATOR,Ann…" (3,407 characters).
QString quotedExcerpt(QStringView text);

/// The same for bytes that a code page could not read: printable ASCII as it is, every other byte
/// as \xHH, from a little before byte `from` on, so that the byte named stays in sight.
QString quotedByteExcerpt(QByteArrayView bytes, qsizetype from = 0);
