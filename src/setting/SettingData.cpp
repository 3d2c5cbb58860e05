#include "setting/SettingData.h"

#include "setting/NumberText.h"

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
        // Steps already as a new project has them are left alone, so that the copies sharing them
        // (the committed and saved copies) go on sharing them.
        ProgramSteps asNew(zeroPadded(program + 1, 4));
        if (ProgramData[program] != asNew)
            ProgramData[program] = std::move(asNew);
    }
}
