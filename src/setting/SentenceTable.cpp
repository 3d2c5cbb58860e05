#include "setting/SentenceTable.h"

#include "setting/SentenceFolderIndex.h"
#include "setting/SentenceFolders.h"
#include "setting/SharedState.h"

#include <QCoreApplication>

namespace {

constexpr int FirstSlotAbove128 = 128;

} // namespace

bool sentenceSlotsUsedFrom(const SettingData &data, int firstSlot)
{
    for (int slot = firstSlot; slot < SentenceTableSize::Largest; ++slot) {
        if (!data.SentenceFileName[slot].isEmpty())
            return true;
    }
    return false;
}

void clearSentenceSlotsFrom(SettingData &data, int firstSlot)
{
    for (int slot = firstSlot; slot < SentenceTableSize::Largest; ++slot) {
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

bool sentencesAbove128(const SharedState &state)
{
    return sentenceSlotsUsedFrom(state.SettingBuffer, FirstSlotAbove128)
        || sentenceSlotsUsedFrom(state.Setting, FirstSlotAbove128);
}

void setSentenceTableSize(SharedState &state, bool to512)
{
    qint16 &attribute = state.SettingBuffer.CardAttribute;
    if (to512) {
        attribute = static_cast<qint16>(attribute | SettingData::Attribute512Sentences);
    } else {
        clearSentenceSlotsFrom(state.SettingBuffer, FirstSlotAbove128);
        clearSentenceSlotsFrom(state.Setting, FirstSlotAbove128);
        attribute = static_cast<qint16>(attribute & ~SettingData::Attribute512Sentences);
    }
    state.Setting.CardAttribute = attribute;
}

void copyProgramInBothCopies(SharedState &state, int from, int to)
{
    copyProgram(state.Setting, from - 1, to - 1);
    copyProgram(state.SettingBuffer, from - 1, to - 1);
    emit state.programReplaced(to);
}

QStringList storeCommittedSentences(const SharedState &state, MsgBox &msgBox)
{
    const SentenceFolderIndex waiting(workFolder(state));
    const SentenceFolderIndex stored(projectSentenceFolder(state));
    QStringList problems;
    for (const QString &name : state.Setting.SentenceFileName) {
        if (name.isEmpty())
            continue;
        const QString source = waiting.find(name);
        QString error;
        if (!source.isEmpty()) {
            if (!StoreSentenceFile(state, msgBox, StoreMode::ProjectFolder, source, error))
                problems.append(error);
        } else if (stored.find(name).isEmpty()) {
            problems.append(QCoreApplication::translate("dlgPcCa", "%1 was not found.").arg(name));
        }
    }
    return problems;
}
