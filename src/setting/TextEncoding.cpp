#include "setting/TextEncoding.h"

#include "platform/os/NativeOs.h"
#include "platform/os/OsCodePages.h"

#include <QStringDecoder>
#include <QStringEncoder>

#include <algorithm>
#include <utility>

namespace {

bool isAscii(QByteArrayView bytes)
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

bool isAscii(QStringView text)
{
    return std::all_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < 0x80; });
}

QByteArray nameBytes(const QString &name)
{
    return name.toLatin1();
}

QString builtInName()
{
    return runsOnWindows() ? QStringLiteral("System") : QStringLiteral("CP932");
}

bool namesSystem(const QString &name)
{
    return name.compare(QLatin1String("System"), Qt::CaseInsensitive) == 0;
}

} // namespace

TextEncoding::TextEncoding(QString name)
    : m_name(std::move(name))
    , m_systemCodePage(systemCodePageNamed(m_name))
{ }

TextEncoding TextEncoding::platformDefault()
{
    const QString chosen = qEnvironmentVariable("DQ480_ENCODING");
    if (!chosen.isEmpty())
        return TextEncoding(chosen);
    return TextEncoding(builtInName());
}

bool TextEncoding::isValid() const
{
    // The built-in code page is there wherever the program runs (ICU's on Linux, the system's on
    // Windows); looking it up would load the converter tables at every start.
    if (namesSystem(m_name) || m_name == builtInName() || m_systemCodePage > 0)
        return true;
    return QStringEncoder(nameBytes(m_name).constData()).isValid();
}

// Most files are plain ASCII; they skip the converter, which keeps reading and writing fast.

QByteArray TextEncoding::encode(QStringView text) const
{
    if (isAscii(text))
        return text.toLatin1();
    if (m_systemCodePage)
        return encodeInSystemCodePage(m_systemCodePage, text);
    QStringEncoder encoder = namesSystem(m_name) ? QStringEncoder(QStringConverter::System)
                                                 : QStringEncoder(nameBytes(m_name).constData());
    return encoder.encode(text);
}

QString TextEncoding::decode(QByteArrayView bytes) const
{
    if (isAscii(bytes))
        return QString::fromLatin1(bytes);
    if (m_systemCodePage)
        return decodeInSystemCodePage(m_systemCodePage, bytes);
    QStringDecoder decoder = namesSystem(m_name) ? QStringDecoder(QStringConverter::System)
                                                 : QStringDecoder(nameBytes(m_name).constData());
    return decoder.decode(bytes);
}

std::optional<qsizetype> TextEncoding::firstChangedByte(QByteArrayView bytes) const
{
    if (isAscii(bytes))
        return std::nullopt;
    // Through decode() and encode(), so a code page that only the system's converter knows (every
    // named one on Windows) is read as files are read. A byte that cannot be read comes back as
    // the replacement character, whose bytes differ from it.
    const QByteArray again = encode(decode(bytes));
    if (again == bytes)
        return std::nullopt;
    const auto differs = std::mismatch(bytes.begin(), bytes.end(), again.begin(), again.end());
    return std::min<qsizetype>(differs.first - bytes.begin(), bytes.size() - 1);
}

std::optional<qsizetype> TextEncoding::firstChangedByte(QByteArrayView bytes, QStringView decoded) const
{
    if (isAscii(bytes) || encode(decoded) == bytes)
        return std::nullopt;
    return firstChangedByte(bytes);
}

QString TextEncoding::firstUnencodable(QStringView text) const
{
    // A character fits when it comes back from its bytes as itself. The whole text is tried first,
    // as nearly every text fits.
    if (isAscii(text) || decode(encode(text)) == text)
        return QString();
    qsizetype i = 0;
    while (i < text.size()) {
        const qsizetype length = text[i].isHighSurrogate() && i + 1 < text.size() ? 2 : 1;
        const QStringView character = text.mid(i, length);
        if (decode(encode(character)) != character)
            return character.toString();
        i += length;
    }
    // Each character fits alone but not together (a stateful code page): name the first.
    return text.left(1).toString();
}
