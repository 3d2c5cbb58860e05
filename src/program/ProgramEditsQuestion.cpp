#include "ProgramEditsQuestion.h"

#include "MsgBox.h"
#include "OperatorMessages.h"
#include "SharedState.h"

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
