#include "setting/SettingFileReader.h"

#include "setting/LineReader.h"
#include "setting/NumberText.h"
#include "setting/PathText.h"
#include "setting/SharedState.h"
#include "setting/TextChecks.h"
#include "setting/TextExcerpt.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <limits>
#include <utility>

namespace {

// What a setting file or card control file holds, read over the values reading started from.
struct SettingFileContents
{
    SettingData data;
    bool surveillanceFile = true;
    QString sentencePath; // SNTPATH as the file names it; empty when it names none
    QString problem; // set when a name that cannot be used (one that would leave its folder) rejects the file
    bool read = false; // at least one line was read and nothing was wrong
};

constexpr int OtherPrograms = SettingData::Programs - 1;

bool fitsInt16(qint32 value)
{
    return value >= std::numeric_limits<qint16>::min() && value <= std::numeric_limits<qint16>::max();
}

// One pass over a file. Each handler gets the key line's value (the entry without its final comma)
// and reads the further lines that belong to its key; any handler returning false rejects the file.
class Reader
{
public:
    Reader(SettingFileContents &contents, QString text)
        : m_contents(contents)
        , m_data(contents.data)
        , m_text(std::move(text))
        , m_lines(m_text)
    { }

    void run()
    {
        bool anyLine = false;
        bool ok = true;
        while (ok) {
            const std::optional<QStringView> line = m_lines.next();
            if (!line)
                break;
            anyLine = true;
            ok = handleKeyLine(*line);
        }
        m_contents.read = ok && anyLine;
    }

private:
    bool handleKeyLine(QStringView line)
    {
        // A key has at most 10 characters: the comma must be among the first 11.
        const qsizetype comma = line.left(11).indexOf(QLatin1Char(','));
        if (comma < 0)
            return false;
        const QStringView key = line.left(comma);
        QString entry = line.mid(comma + 1).toString();
        const bool isExplanation = key == QLatin1String("EXPLE");
        if (isExplanation)
            return entry.isEmpty() ? true : readExplanation(entry);
        if (!entry.endsWith(QLatin1Char(',')))
            entry += QLatin1Char(',');
        const QStringView value = QStringView(entry).chopped(1);

        if (key == QLatin1String("PJNAME")) {
            // The project name becomes a folder name below the program's folder.
            if (!acceptName(QStringLiteral("PJNAME"), value))
                return false;
            m_data.ProjectName = value.toString();
        } else if (key == QLatin1String("CREATOR"))
            m_data.Creator = value.toString();
        else if (key == QLatin1String("CARDNAME"))
            m_data.CardName = value.toString();
        else if (key == QLatin1String("SNTPATH"))
            m_contents.sentencePath = value.toString();
        else if (key == QLatin1String("SVFILE"))
            m_contents.surveillanceFile = value != QLatin1String("NONE");
        else if (key == QLatin1String("CARDATB"))
            return readCardAttribute(value);
        else if (key == QLatin1String("SNTCTTL"))
            return readSentenceControls(value);
        else if (key == QLatin1String("FILENAME"))
            return readFileNames(line);
        else if (key == QLatin1String("AUTOLVL"))
            return true;
        else if (key == QLatin1String("PRGDATA"))
            return readProgramData(line);
        else if (key == QLatin1String("PRGOPT"))
            return readProgramOptions(value);
        else if (key == QLatin1String("RPTCNT"))
            return readRepeatValues(value, QLatin1String("RPTCNT,"), m_data.RepeatCount);
        else if (key == QLatin1String("RPTITV"))
            return readRepeatValues(value, QLatin1String("RPTITV,"), m_data.RepeatInterval);
        else if (key == QLatin1String("PRGNAME"))
            return readProgramNames(value);
        else if (key == QLatin1String("PRGSORT"))
            return readSentenceOrder(value);
        else
            return false;
        return true;
    }

    // The explanation may span lines: they are joined with CR LF until one ends with a comma,
    // which must come within 11 further lines.
    bool readExplanation(QString entry)
    {
        for (int extra = 0; !entry.endsWith(QLatin1Char(',')); ++extra) {
            const std::optional<QStringView> line = m_lines.next();
            if (extra == 11 || !line)
                return false;
            entry += QLatin1String("\r\n");
            entry += *line;
        }
        entry.chop(1);
        m_data.Explanation = entry;
        return true;
    }

    bool readCardAttribute(QStringView value)
    {
        if (!IsHexText(0, value))
            return false;
        const std::optional<qint32> attribute = HexTextToLong(value);
        // The word is 16 bits wide; the writer shows bit 15 as a four-digit text, so up to FFFF is
        // taken as that bit pattern. Anything wider would not fit and rejects the file.
        if (!attribute || *attribute > 0xFFFF)
            return false;
        m_data.CardAttribute = static_cast<qint16>(static_cast<quint16>(*attribute));
        m_capacity = SentenceTableSize::ofAttribute(*attribute).entries();
        return true;
    }

    // With the test tone on, the first line of each sentence group is the tone's and is dropped;
    // with it off, the first line is slot 0's and is taken whole (8 characters of control text, the
    // raw 8-character file name).
    // Kept on purpose: that asymmetry is how the format has always been read.
    int firstSlotCounter() const { return m_contents.surveillanceFile ? 1 : 2; }

    bool readSentenceControls(QStringView value)
    {
        if (!m_contents.surveillanceFile)
            m_data.SentenceControl[0] = value.toString();
        int counter = firstSlotCounter();
        while (counter <= m_capacity) {
            const std::optional<QStringView> line = m_lines.next();
            if (!line)
                return false;
            if (!line->startsWith(QLatin1String("SNTCTTL,"))) {
                if (!line->startsWith(QLatin1String("FILENAME,")))
                    return false;
                m_sentenceEntries = counter - 1;
                return readFileNames(*line);
            }
            m_data.SentenceControl[counter - 1] = line->mid(8, 4).toString();
            ++counter;
        }
        // A full card: every slot had its line before the file names came.
        m_sentenceEntries = counter - 1;
        return true;
    }

    // A name from a file meets the checks a typed one does: it must not lead out of the folder it
    // is looked up in or written to.
    bool acceptName(const QString &key, QStringView name)
    {
        if (IsUsableNameText(name))
            return true;
        m_contents.problem
            = QCoreApplication::translate("SettingFileReader", "%1 %2 cannot be used as a name")
                  .arg(key, quotedExcerpt(name));
        return false;
    }

    bool readFileNames(QStringView keyLine)
    {
        if (!m_contents.surveillanceFile) {
            const QStringView raw = keyLine.mid(9, 8);
            if (!acceptName(QStringLiteral("FILENAME"), raw))
                return false;
            m_data.SentenceFileName[0] = raw.toString();
        }
        for (int counter = firstSlotCounter(); counter <= m_sentenceEntries; ++counter) {
            const std::optional<QStringView> line = m_lines.next();
            if (!line || !line->startsWith(QLatin1String("FILENAME,")))
                return false;
            const QStringView field = line->mid(9, 8);
            QString name;
            if (!field.startsWith(QLatin1Char(' '))) {
                const qsizetype blank = field.indexOf(QLatin1Char(' '));
                name = (blank < 0 ? field : field.left(blank)).toString() + QLatin1String(".MP2");
                if (!acceptName(QStringLiteral("FILENAME"), name))
                    return false;
            }
            m_data.SentenceFileName[counter - 1] = name;
        }
        return true;
    }

    // Steps are comma-separated four-character fields; "3000" ends the list.
    bool readStepsOf(int program, QStringView fields)
    {
        auto &steps = m_data.ProgramData[program];
        int step = 0;
        qsizetype start = 0;
        while (start < fields.size()) {
            qsizetype end = start;
            while (end < fields.size() && fields[end] != QLatin1Char(',') && fields[end] != QLatin1Char('\r')
                   && fields[end] != QLatin1Char('\n'))
                ++end;
            const QStringView field = fields.mid(start, end - start).left(4);
            start = end + 1;
            if (field.trimmed().isEmpty())
                continue;
            QString text = applyZeroPattern(field, 4);
            if (text == QLatin1String("3000"))
                break;
            if (step == SettingData::StepsPerProgram)
                return false;
            steps[step++] = std::move(text);
        }
        return true;
    }

    // The key line holds program 1; the 63 lines after it must carry the same key and hold the
    // others. `take` gets each program's number and the text after the key's comma.
    template<typename Take>
    bool readOtherPrograms(QLatin1String prefix, Take take)
    {
        for (int program = 1; program <= OtherPrograms; ++program) {
            const std::optional<QStringView> line = m_lines.next();
            if (!line || !line->startsWith(prefix) || !take(program, line->mid(prefix.size())))
                return false;
        }
        return true;
    }

    bool readProgramData(QStringView keyLine)
    {
        const auto take = [this](int program, QStringView fields) {
            return readStepsOf(program, fields);
        };
        return take(0, keyLine.mid(8)) && readOtherPrograms(QLatin1String("PRGDATA,"), take);
    }

    bool readProgramOptions(QStringView value)
    {
        // Four characters never overflow the hexadecimal conversion.
        const auto take = [this](int program, QStringView text) {
            m_data.ProgramOption[program] = HexTextToLong(text.left(4)).value_or(0);
            return true;
        };
        return take(0, value) && readOtherPrograms(QLatin1String("PRGOPT,"), take);
    }

    static bool readNumber16(QStringView text, qint16 &target)
    {
        const std::optional<qint32> number = leadingNumber(text);
        if (!number || !fitsInt16(*number))
            return false;
        target = static_cast<qint16>(*number);
        return true;
    }

    bool readRepeatValues(QStringView value, QLatin1String prefix,
                          std::array<qint16, SettingData::Programs> &target)
    {
        const auto take = [&target](int program, QStringView text) {
            return readNumber16(text, target[program]);
        };
        return take(0, value) && readOtherPrograms(prefix, take);
    }

    bool readProgramNames(QStringView value)
    {
        m_data.ProgramName[0] = value.toString();
        return readOtherPrograms(QLatin1String("PRGNAME,"), [this](int program, QStringView name) {
            if (name.endsWith(QLatin1Char(',')))
                name.chop(1);
            m_data.ProgramName[program] = name.toString();
            return true;
        });
    }

    struct SortEntry
    {
        QString fileName;
        QString control;
        qint16 number = 0;
    };

    // PRGSORT puts each listed sentence (matched to the lists above by position) into the slot its
    // number names.
    // Kept on purpose: a number listed twice keeps the later sentence, losing the earlier.
    bool readSentenceOrder(QStringView value)
    {
        std::array<SortEntry, SentenceTableSize::Largest> work;
        auto place = [&](QStringView numberText, int position) -> std::optional<qint16> {
            const std::optional<qint32> v = leadingNumber(numberText);
            if (!v || *v < 1 || *v > SentenceTableSize::Largest)
                return std::nullopt;
            const auto number = static_cast<qint16>(*v);
            work[number - 1] = {m_data.SentenceFileName[position], m_data.SentenceControl[position], number};
            return number;
        };
        if (!m_contents.surveillanceFile) {
            const std::optional<qint16> first = place(value, 0);
            if (!first)
                return false;
            m_data.ProgramSort[0] = *first;
        }
        for (int counter = firstSlotCounter(); counter <= m_sentenceEntries; ++counter) {
            const std::optional<QStringView> line = m_lines.next();
            if (!line || !line->startsWith(QLatin1String("PRGSORT,")) || !place(line->mid(8), counter - 1))
                return false;
        }
        for (int slot = 0; slot < SentenceTableSize::Largest; ++slot) {
            m_data.SentenceFileName[slot] = std::move(work[slot].fileName);
            m_data.SentenceControl[slot] = std::move(work[slot].control);
            m_data.ProgramSort[slot] = work[slot].number;
        }
        return true;
    }

    SettingFileContents &m_contents;
    SettingData &m_data;
    const QString m_text; // the lines look into it
    LineReader m_lines;
    int m_capacity = 0; // stays 0 until CARDATB has been read
    int m_sentenceEntries = 0;
};

// Reads the text over `start` and the test-tone switch as they stand; after a rejection, what was
// read before it stays in the data.
SettingFileContents ReadSettingFileContents(QString text, SettingData start, bool surveillanceFile)
{
    SettingFileContents contents {std::move(start), surveillanceFile, {}, {}, false};
    Reader(contents, std::move(text)).run();
    return contents;
}

// Puts what was read into SettingBuffer, SurveillanceFile and SentencePath.
void ApplySettingFileContents(SharedState &state, SettingFileContents contents)
{
    state.SettingBuffer = std::move(contents.data);
    state.SurveillanceFile = contents.surveillanceFile;
    // A folder named in the file that is not on this PC falls back to the program's folder,
    // without the trailing separator a new project has.
    const QString &path = contents.sentencePath;
    const bool usable = !path.isEmpty() && !path.contains(QChar(0));
    state.SentencePath = usable && QFileInfo(path).isDir() ? path : withoutTrailingSeparator(state.AppPath);
}

} // namespace

bool ReadSettingFile(SharedState &state, QByteArrayView bytes)
{
    QString problem;
    return ReadSettingFile(state, bytes, problem);
}

bool ReadSettingFile(SharedState &state, QByteArrayView bytes, QString &problem)
{
    return ReadDecodedSettingFile(state, state.Encoding.decode(bytes), problem);
}

bool ReadDecodedSettingFile(SharedState &state, QString text, QString &problem)
{
    SettingFileContents contents
        = ReadSettingFileContents(std::move(text), state.SettingBuffer, state.SurveillanceFile);
    const bool read = contents.read;
    problem = contents.problem;
    ApplySettingFileContents(state, std::move(contents));
    return read;
}
