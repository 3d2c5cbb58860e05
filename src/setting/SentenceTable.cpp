#include "SentenceTable.h"

bool sentenceSlotsUsedFrom(const SettingData &data, int firstSlot)
{
    for (int slot = firstSlot; slot < SettingData::SentenceSlots; ++slot) {
        if (!data.SentenceFileName[slot].isEmpty())
            return true;
    }
    return false;
}

void clearSentenceSlotsFrom(SettingData &data, int firstSlot)
{
    for (int slot = firstSlot; slot < SettingData::SentenceSlots; ++slot) {
        data.SentenceFileName[slot].clear();
        data.SentenceControl[slot].clear();
        data.ProgramSort[slot] = 0;
    }
}

void copyProgram(SettingData &data, int from, int to)
{
    data.ProgramData[to] = data.ProgramData[from];
    data.ProgramName[to] = data.ProgramName[from];
    data.RepeatCount[to] = data.RepeatCount[from];
    data.RepeatInterval[to] = data.RepeatInterval[from];
    data.ProgramOption[to] = data.ProgramOption[from];
}
