#include "CodePageCheck.h"

#include "SharedState.h"

#include <QCoreApplication>
#include <QList>

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
    for (int slot = 0; slot < s.sentenceCapacity(); ++slot) {
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
                                       "%1 \"%2\" holds \"%3\" (U+%4), which the code page %5 cannot hold.")
        .arg(found.key, found.text, found.character,
             QStringLiteral("%1").arg(static_cast<uint>(code), 4, 16, QLatin1Char('0')).toUpper(), codePage);
}
