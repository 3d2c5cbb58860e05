#include "audio/SentenceName.h"

#include "setting/TextChecks.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>

namespace {

const QLatin1String Extension(".MP2");

QString baseOf(const QString &name)
{
    return name.endsWith(Extension, Qt::CaseInsensitive) ? name.chopped(Extension.size()) : name;
}

bool isPlainAscii(QChar c)
{
    return c.unicode() > 32 && c.unicode() < 127;
}

// Names Windows keeps for its devices: a sentence so named could not be stored on a Windows PC.
bool isDeviceName(const QString &base)
{
    static const QRegularExpression Device(QStringLiteral("^(CON|PRN|AUX|NUL|COM[1-9]|LPT[1-9])$"),
                                           QRegularExpression::CaseInsensitiveOption);
    return Device.match(base).hasMatch();
}

} // namespace

SentenceNameFault sentenceNameFault(const QString &name)
{
    const QString base = baseOf(name);
    if (base.isEmpty())
        return SentenceNameFault::Empty;
    if (base.size() > LongestSentenceName)
        return SentenceNameFault::TooLong;
    if (!std::all_of(base.begin(), base.end(), isPlainAscii))
        return SentenceNameFault::NotPlainAscii;
    // A full stop before ".MP2" makes a name the card's FAT keeps only as a long name, which the
    // device's eight-and-three names do not reach.
    if (base.contains(QLatin1Char('.')))
        return SentenceNameFault::FullStop;
    if (!IsUsableNameText(base))
        return SentenceNameFault::ForbiddenCharacter;
    return isDeviceName(base) ? SentenceNameFault::DeviceName : SentenceNameFault::None;
}

bool isFittingSentenceName(const QString &name)
{
    return sentenceNameFault(name) == SentenceNameFault::None;
}

QString sentenceFileName(const QString &name)
{
    return baseOf(name).toUpper() + Extension;
}

QString sentenceFileNameForRecording(const QString &recordingPath)
{
    return sentenceFileName(QFileInfo(recordingPath).completeBaseName());
}

QString proposeSentenceName(const QString &recordingPath, const QStringList &taken)
{
    QString base;
    bool gap = false;
    // "Überfahrt" gives "UBERFAHR": accented letters keep their base letter.
    for (const QChar c :
         QFileInfo(recordingPath).completeBaseName().normalized(QString::NormalizationForm_KD)) {
        if (c.category() == QChar::Mark_NonSpacing)
            continue;
        if (c.unicode() < 127 && c.isLetterOrNumber()) {
            if (gap && !base.isEmpty())
                base += QLatin1Char('_');
            base += c.toUpper();
            gap = false;
        } else {
            gap = true;
        }
    }
    base.truncate(LongestSentenceName);
    if (base.isEmpty())
        base = QStringLiteral("SENTENCE");
    const auto isTaken = [&](const QString &candidate) {
        return taken.contains(candidate + Extension, Qt::CaseInsensitive)
            || taken.contains(candidate, Qt::CaseInsensitive) || isDeviceName(candidate);
    };
    QString candidate = base;
    for (int number = 2; isTaken(candidate) && number < 10000000; ++number) {
        const QString digits = QString::number(number);
        candidate = base.left(LongestSentenceName - digits.size()) + digits;
    }
    return candidate + Extension;
}
