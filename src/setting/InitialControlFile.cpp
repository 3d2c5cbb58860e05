#include "setting/InitialControlFile.h"

#include "setting/NumberText.h"
#include "setting/SharedState.h"

#include <utility>

namespace {

void fillEmptyProject(SettingData &s)
{
    s.ProjectName.clear();
    s.Creator.clear();
    s.Explanation.clear();
    s.ControlFileName = QStringLiteral("DQ480.CSV");
    s.CardName.clear();
    s.CardAttribute = 0xA6;
    for (int program = 0; program < SettingData::Programs; ++program) {
        s.ProgramName[program] = QLatin1Char('P') + zeroPadded(program + 1, 3);
        // Kept on purpose: not the new-project word; the format has always used this one.
        s.ProgramOption[program] = 0x2F01;
        s.RepeatCount[program] = 1;
        s.RepeatInterval[program] = 0;
        s.ProgramData[program] = ProgramSteps();
    }
    for (int slot = 0; slot < SentenceTableSize::Largest; ++slot) {
        s.SentenceFileName[slot].clear();
        s.SentenceControl[slot].clear();
        s.ProgramSort[slot] = 0;
    }
}

} // namespace

bool WriteInitialControlFile(SharedState &state, MsgBox &msgBox, const CardWriteHooks &hooks)
{
    const SettingData kept = state.Setting;
    const QString keptSentencePath = state.SentencePath;
    fillEmptyProject(state.Setting);
    state.SentencePath.clear();
    const bool written = WriteCard(state, msgBox, hooks, false);
    state.Setting = kept;
    state.SentencePath = keptSentencePath;
    return written;
}
