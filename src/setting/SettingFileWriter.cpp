#include "setting/SettingFileWriter.h"

#include "setting/NumberText.h"
#include "setting/SharedState.h"

#include <algorithm>

namespace {

const QLatin1String CrLf("\r\n");

void addLine(QString &out, QLatin1String key, QStringView value)
{
    out += key;
    out += value;
    out += QLatin1Char(',');
    out += CrLf;
}

// Writes `text` over a copy of `field` from its start without ever lengthening it.
// Kept on purpose: a longer text is cut, as the fixed-width sentence fields have always been filled.
QString overwriteField(QString field, QStringView text)
{
    const qsizetype count = qMin(text.size(), field.size());
    field.replace(0, count, text.left(count).toString());
    return field;
}

// CARDATB: the 16-bit word in upper-case hexadecimal; a hex text made of digits only is then
// padded to three digits ("40" gives "040"), one with letters stays as it is ("A6").
QString cardAttributeText(qint16 attribute)
{
    const QString hex = QString::number(static_cast<quint16>(attribute), 16).toUpper();
    const bool digitsOnly = std::all_of(hex.begin(), hex.end(), [](QChar c) { return c.isDigit(); });
    return digitsOnly ? hex.rightJustified(3, QLatin1Char('0')) : hex;
}

// PRGOPT: the rightmost four hexadecimal digits of the 32-bit word.
QString programOptionText(qint32 option)
{
    return QString::number(static_cast<quint32>(option), 16).toUpper().right(4);
}

QString fileNameField(const QString &fileName)
{
    const QString stem = fileName.left(qMax<qsizetype>(0, fileName.size() - 4)).toUpper();
    return overwriteField(QString(8, QLatin1Char(' ')), QStringView(stem).left(8));
}

void writeBody(const SharedState &state, QString &out)
{
    const SettingData &s = state.Setting;
    const int capacity = s.sentenceTable().entries();
    const bool tone = state.SurveillanceFile;

    addLine(out, QLatin1String("CARDNAME,"), s.CardName);
    addLine(out, QLatin1String("CARDATB,"), cardAttributeText(s.CardAttribute));

    if (tone)
        out += QLatin1String("SNTCTTL,SIN1KHZ ,\r\n");
    const QString controlTemplate = QStringLiteral("        ,");
    for (int slot = 0; slot < capacity; ++slot) {
        if (!s.SentenceControl[slot].isEmpty()) {
            out += QLatin1String("SNTCTTL,");
            out += overwriteField(controlTemplate, s.SentenceControl[slot]);
            out += CrLf;
        }
    }

    if (tone)
        out += QLatin1String("FILENAME,SIN1KHZ ,\r\n");
    for (int slot = 0; slot < capacity; ++slot) {
        if (!s.SentenceFileName[slot].isEmpty())
            addLine(out, QLatin1String("FILENAME,"), fileNameField(s.SentenceFileName[slot]));
    }

    if (tone)
        out += QLatin1String("AUTOLVL,000,\r\n");
    for (int slot = 0; slot < capacity; ++slot) {
        if (!s.SentenceFileName[slot].isEmpty())
            out += QLatin1String("AUTOLVL,000,\r\n");
    }

    for (const auto &steps : s.ProgramData) {
        out += QLatin1String("PRGDATA,");
        for (const QString &step : steps) {
            if (!step.isEmpty()) {
                out += step;
                out += QLatin1Char(',');
            }
        }
        out += QLatin1String("3000,\r\n");
    }
    for (const qint32 option : s.ProgramOption)
        addLine(out, QLatin1String("PRGOPT,"), programOptionText(option));
    for (const qint16 count : s.RepeatCount)
        addLine(out, QLatin1String("RPTCNT,"), zeroPadded(count, 3));
    for (const qint16 interval : s.RepeatInterval)
        addLine(out, QLatin1String("RPTITV,"), zeroPadded(interval, 3));
    for (const QString &name : s.ProgramName)
        addLine(out, QLatin1String("PRGNAME,"), name);

    if (tone)
        out += QLatin1String("PRGSORT,0000,\r\n");
    for (int slot = 0; slot < capacity; ++slot) {
        if (s.ProgramSort[slot] != 0)
            addLine(out, QLatin1String("PRGSORT,"), zeroPadded(s.ProgramSort[slot], 4));
    }
}

// A full 512-sentence project with every step used is about 60 KB of text.
constexpr qsizetype TypicalFileSize = 64 * 1024;

} // namespace

QByteArray WriteSettingFile(const SharedState &state)
{
    QString out;
    out.reserve(TypicalFileSize);
    addLine(out, QLatin1String("PJNAME,"), state.Setting.ProjectName);
    addLine(out, QLatin1String("CREATOR,"), state.Setting.Creator);
    addLine(out, QLatin1String("EXPLE,"), state.Setting.Explanation);
    addLine(out, QLatin1String("SNTPATH,"), state.SentencePath);
    out += state.SurveillanceFile ? QLatin1String("SVFILE,NOMAL,\r\n") : QLatin1String("SVFILE,NONE,\r\n");
    writeBody(state, out);
    return state.Encoding.encode(out);
}

QByteArray WriteSettingBody(const SharedState &state)
{
    QString out;
    out.reserve(TypicalFileSize);
    writeBody(state, out);
    return state.Encoding.encode(out);
}
