#include "setting/TextShape.h"

#include <QCoreApplication>

namespace {

uchar byteAt(QByteArrayView bytes, qsizetype i)
{
    return i < bytes.size() ? static_cast<uchar>(bytes[i]) : 0xFF;
}

// Without a byte order mark, UTF-16 shows itself by the NUL beside each letter of its first key.
bool looksLikeUtf16(QByteArrayView bytes)
{
    if (bytes.startsWith("\xFF\xFE") || bytes.startsWith("\xFE\xFF"))
        return true;
    const auto zeroAt = [&](qsizetype i) {
        return byteAt(bytes, i) == 0;
    };
    const bool littleEndian = zeroAt(1) && zeroAt(3) && !zeroAt(0) && !zeroAt(2);
    const bool bigEndian = zeroAt(0) && zeroAt(2) && !zeroAt(1) && !zeroAt(3);
    return littleEndian || bigEndian;
}

} // namespace

TextShape textShape(QByteArrayView bytes)
{
    if (looksLikeUtf16(bytes))
        return TextShape::Utf16;
    if (bytes.startsWith("\xEF\xBB\xBF"))
        return TextShape::Utf8WithMark;
    // One CR at the very end is a one-line file; a CR with more after it and no LF anywhere means
    // every line ends so, and the reader would take the whole file for its first line.
    const qsizetype cr = bytes.indexOf('\r');
    if (cr >= 0 && cr + 1 < bytes.size() && !bytes.contains('\n'))
        return TextShape::CrOnlyLines;
    return TextShape::Plain;
}

QString textShapeMessage(TextShape shape, const QString &path, const QString &codePage)
{
    switch (shape) {
    case TextShape::Utf16:
        return QCoreApplication::translate(
                   "TextShape",
                   "%1 is UTF-16 text (two bytes a character), but setting files have "
                   "one byte a character, in the code page %2. Save it again in that "
                   "code page.")
            .arg(path, codePage);
    case TextShape::Utf8WithMark:
        return QCoreApplication::translate(
                   "TextShape",
                   "%1 begins with a UTF-8 byte order mark, which setting files do not "
                   "have. Save it again without the mark, in the code page %2.")
            .arg(path, codePage);
    case TextShape::CrOnlyLines:
        return QCoreApplication::translate(
                   "TextShape",
                   "The lines of %1 end with CR alone, as on old Macintosh computers, "
                   "but setting files end each line with CR LF. Save it again with CR "
                   "LF line ends.")
            .arg(path);
    case TextShape::Plain:
        break;
    }
    return QString();
}
