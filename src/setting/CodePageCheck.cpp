#include "setting/CodePageCheck.h"

#include "setting/LineReader.h"
#include "setting/SharedState.h"
#include "setting/TextEncoding.h"
#include "setting/TextExcerpt.h"

#include <QCoreApplication>
#include <QList>

#include <algorithm>

namespace {

std::optional<UnencodableText> check(const TextEncoding &encoding, const QString &key, const QString &text)
{
    const QString character = encoding.firstUnencodable(text);
    if (character.isEmpty())
        return std::nullopt;
    return UnencodableText {key, text, character};
}

} // namespace

std::optional<UnencodableText> findUnencodableText(const SharedState &state)
{
    const TextEncoding &encoding = state.Encoding;
    const SettingData &s = state.Setting;
    const std::pair<const char *, const QString *> single[] = {
        {"PJNAME", &s.ProjectName},       {"CREATOR", &s.Creator},   {"EXPLE", &s.Explanation},
        {"SNTPATH", &state.SentencePath}, {"CARDNAME", &s.CardName},
    };
    for (const auto &[key, text] : single) {
        if (auto found = check(encoding, QLatin1String(key), *text))
            return found;
    }
    for (int slot = 0; slot < s.sentenceTable().entries(); ++slot) {
        if (auto found = check(encoding, QStringLiteral("SNTCTTL"), s.SentenceControl[slot]))
            return found;
        if (auto found = check(encoding, QStringLiteral("FILENAME"), s.SentenceFileName[slot]))
            return found;
    }
    for (const QString &name : s.ProgramName) {
        if (auto found = check(encoding, QStringLiteral("PRGNAME"), name))
            return found;
    }
    return std::nullopt;
}

QString unencodableTextMessage(const UnencodableText &found, const QString &codePage)
{
    const char32_t code = QStringView(found.character).toUcs4().value(0);
    return QCoreApplication::translate("CodePageCheck",
                                       "%1 %2 holds \"%3\" (U+%4), which the code page %5 cannot hold.")
        .arg(found.key, quotedExcerpt(found.text), found.character,
             QStringLiteral("%1").arg(static_cast<uint>(code), 4, 16, QLatin1Char('0')).toUpper(), codePage);
}

namespace {

// The key of a line: its text before a comma among the first 11 characters, in capitals.
QString keyOf(QByteArrayView line)
{
    const qsizetype comma = line.first(std::min<qsizetype>(line.size(), 11)).indexOf(',');
    if (comma <= 0)
        return QString();
    const QByteArrayView key = line.first(comma);
    const bool capitals = std::all_of(key.begin(), key.end(), [](char c) { return c >= 'A' && c <= 'Z'; });
    return capitals ? QString::fromLatin1(key) : QString();
}

} // namespace

std::optional<ChangedLine> findChangedLine(QByteArrayView file, QStringView text,
                                           const TextEncoding &encoding)
{
    // Nearly every file comes back whole; only one that does not is looked at line by line.
    if (encoding.encode(text) == file)
        return std::nullopt;
    QString key;
    int number = 0;
    LineReader textLines(text);
    for (qsizetype start = 0; start < file.size();) {
        qsizetype end = file.indexOf('\n', start);
        if (end < 0)
            end = file.size();
        QByteArrayView line = file.sliced(start, end - start);
        if (line.endsWith('\r'))
            line.chop(1);
        // The same line as it was read: LF is one byte in every code page a setting file can be in.
        const QStringView decoded = textLines.next().value_or(QStringView());
        ++number;
        // A line without a key of its own continues the explanation above it.
        const QString own = keyOf(line);
        if (!own.isEmpty())
            key = own;
        if (const std::optional<qsizetype> at = encoding.firstChangedByte(line, decoded)) {
            // The value is what the operator knows: the line without its key and final comma.
            const qsizetype valueStart = own.isEmpty() ? 0 : own.size() + 1;
            QByteArrayView value = line.sliced(valueStart);
            if (!own.isEmpty() && value.endsWith(','))
                value.chop(1);
            return ChangedLine {number, key, value.toByteArray(), std::max<qsizetype>(0, *at - valueStart)};
        }
        start = end + 1;
    }
    return std::nullopt;
}

QString changedLineMessage(const ChangedLine &found, const QString &path, const QString &codePage)
{
    const QString bytes = quotedByteExcerpt(found.bytes, found.at);
    const QString where = found.key.isEmpty()
        ? QCoreApplication::translate("CodePageCheck", "Line %1 of %2")
              .arg(QString::number(found.number), path)
        : QCoreApplication::translate("CodePageCheck", "Line %1 of %2 (%3)")
              .arg(QString::number(found.number), path, found.key);
    return QCoreApplication::translate("CodePageCheck",
                                       "%1 holds bytes that the code page %2 cannot read as they are: %3. "
                                       "Saved again, they would change. Start the program with --encoding "
                                       "and the code page the file was written in, for example --encoding "
                                       "windows-1252 or --encoding UTF-8.")
        .arg(where, codePage, bytes);
}
