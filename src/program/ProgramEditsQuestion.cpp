#include "program/ProgramEditsQuestion.h"

#include "setting/MsgBox.h"
#include "setting/OperatorMessages.h"
#include "setting/SharedState.h"

bool mayDiscardProgramEdits(SharedState &state, MsgBox &msgBox)
{
    if (state.SettingEqualsBuffer(SettingSection::CardSentencesPrograms)
        && state.SettingEqualsBuffer(SettingSection::Steps))
        return true;
    if (!msgBox.confirm(contentsOfEditQuestion()))
        return false;
    state.CopySettingToBuffer(SettingSection::All);
    return true;
}
