#include "SentenceName.h"

#include "TextChecks.h"

#include <QFileInfo>
#include <QRegularExpression>

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

bool isFittingSentenceName(const QString &name)
{
    const QString base = baseOf(name);
    if (base.isEmpty() || base.size() > LongestSentenceName)
        return false;
    // A full stop before ".MP2" makes a name the card's FAT keeps only as a long name, which the
    // device's eight-and-three names do not reach.
    for (const QChar c : base)
        if (!isPlainAscii(c) || c == QLatin1Char('.'))
            return false;
    return IsUsableNameText(base) && !isDeviceName(base);
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
