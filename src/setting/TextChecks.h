#pragma once

#include <QStringView>

#include <optional>

class TextEncoding;

/// With mode 0: every character is 0-9, A-F or a-f (the empty text passes). Any other mode passes
/// without looking at the text.
bool IsHexText(int mode, QStringView text);

/// Reads upper-case hexadecimal from the last character to the first. A character that is not 0-9
/// or A-F (lower case included) drops what was summed so far and the scan goes on. Texts of eight
/// or more characters overflow the 32-bit place weight: they give no value.
std::optional<qint32> HexTextToLong(QStringView text);

/// Every character is 0-9; the empty text passes.
bool IsDecimalText(QStringView text);

/// False when the text holds one of \ / : * ? < > | , " ; (file names cannot hold most of them; the
/// comma and the semicolon would break the card control file). The empty text passes.
bool IsValidFileNameText(QStringView text);

/// IsValidFileNameText, and every character fits the setting file's code page: a character it
/// cannot hold would come back as another, naming another file or folder.
bool IsValidNameInCodePage(QStringView text, const TextEncoding &encoding);

/// True when the text can name a file or folder inside a given folder: it passes
/// IsValidFileNameText, holds no control character, and is not "." or ".." (nor only full stops,
/// which Windows trims to those), so it can never lead out of the folder. The empty text passes:
/// it names nothing.
bool IsUsableNameText(QStringView text);

/// True when an explanation (lines joined by CR LF) reads back from a setting file as it was
/// written: at most 12 lines, no line but the last ending in a comma, and no empty first line
/// in front of others. The reader would cut or reject anything else.
bool IsStorableExplanation(QStringView text);
