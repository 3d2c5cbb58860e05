#include "SettingData.h"

#include "NumberText.h"

void SettingData::resetToNewProject()
{
    ProjectName.clear();
    Creator.clear();
    Explanation.clear();
    ControlFileName = QStringLiteral("DQ480.CSV");
    CardName.clear();
    CardAttribute = 0xA6;
    for (int slot = 0; slot < SentenceTableSize::Largest; ++slot) {
        SentenceControl[slot].clear();
        SentenceFileName[slot].clear();
        SentenceState[slot] = 0;
        ProgramSort[slot] = 0;
    }
    for (int program = 0; program < Programs; ++program) {
        ProgramOption[program] = 0x2D01;
        RepeatCount[program] = 1;
        RepeatInterval[program] = 0;
        ProgramName[program] = QLatin1Char('P') + zeroPadded(program + 1, 3);
        // Steps already as a new project has them are left alone, so that a copy sharing them
        // (the committed and saved copies) goes on sharing them.
        ProgramSteps &steps = ProgramData[program];
        if (const QString first = zeroPadded(program + 1, 4); steps.at(0) != first)
            steps[0] = first;
        for (int step = 1; step < StepsPerProgram; ++step) {
            if (!steps.at(step).isEmpty())
                steps[step].clear();
        }
    }
}

std::array<ProgramSteps, SettingData::Programs> SettingData::emptyPrograms()
{
    const ProgramSteps empty(StepsPerProgram);
    std::array<ProgramSteps, Programs> programs;
    programs.fill(empty);
    return programs;
}
