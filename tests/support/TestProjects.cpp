#include "support/TestProjects.h"

#include "setting/NumberText.h"

std::unique_ptr<SharedState> makeTestState(const QString &appPath, const QString &encoding)
{
    return std::make_unique<SharedState>(appPath, TextEncoding(encoding));
}

void fillSentences(SettingData &data, int capacity, int used)
{
    if (capacity == 512)
        data.CardAttribute = static_cast<qint16>(data.CardAttribute | SettingData::Attribute512Sentences);
    for (int slot = 0; slot < used; ++slot) {
        const QString number = zeroPadded(slot + 1, 3);
        data.SentenceFileName[slot] = QLatin1Char('S') + number + QLatin1String(".MP2");
        data.SentenceControl[slot] = QLatin1Char('A') + number;
        data.ProgramSort[slot] = static_cast<qint16>(slot + 1);
    }
}

void fillSteps(SettingData &data, int steps)
{
    for (int program = 0; program < SettingData::Programs; ++program) {
        for (int step = 0; step < steps; ++step) {
            const int value = step % 3 == 2 ? (step % 2 ? 2215 : 2005) : 1 + (program * 7 + step) % 512;
            data.ProgramData[program][step] = zeroPadded(value, 4);
        }
    }
}

void fillFullProject(SettingData &data)
{
    data.ProjectName = QStringLiteral("Full");
    data.Creator = QStringLiteral("Bench");
    data.Explanation = QStringLiteral("Every slot and step used\r\nsecond line");
    data.CardName = QStringLiteral("CARD512");
    fillSentences(data, 512, 512);
    fillSteps(data, SettingData::StepsPerProgram);
    for (int program = 0; program < SettingData::Programs; ++program) {
        static constexpr qint32 methods[] = {0x2D01, 0x4301, 0x6700, 0xC028};
        data.ProgramOption[program] = methods[program % 4];
        data.RepeatCount[program] = static_cast<qint16>(program % 10);
        data.RepeatInterval[program] = static_cast<qint16>(program % 12);
    }
}
