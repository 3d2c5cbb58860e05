#include "setting/SettingData.h"

// The section contents are fixed: 0 the project texts, 1 the card word, the sentence table and the
// per-program settings, 2 the steps. SentenceState belongs to section 1 although it never reaches a
// file, so a difference in it alone still counts as an uncommitted change.

namespace {

void copyTexts(const SettingData &from, SettingData &to)
{
    to.ProjectName = from.ProjectName;
    to.Creator = from.Creator;
    to.Explanation = from.Explanation;
}

void copyCard(const SettingData &from, SettingData &to)
{
    to.CardAttribute = from.CardAttribute;
    to.CardName = from.CardName;
    to.ControlFileName = from.ControlFileName;
    to.SentenceState = from.SentenceState;
    to.SentenceFileName = from.SentenceFileName;
    to.SentenceControl = from.SentenceControl;
    to.ProgramSort = from.ProgramSort;
    to.ProgramOption = from.ProgramOption;
    to.ProgramName = from.ProgramName;
    to.RepeatCount = from.RepeatCount;
    to.RepeatInterval = from.RepeatInterval;
}

bool textsEqual(const SettingData &a, const SettingData &b)
{
    return a.ProjectName == b.ProjectName && a.Creator == b.Creator && a.Explanation == b.Explanation;
}

bool cardEqual(const SettingData &a, const SettingData &b)
{
    return a.CardAttribute == b.CardAttribute && a.CardName == b.CardName
        && a.ControlFileName == b.ControlFileName && a.SentenceState == b.SentenceState
        && a.SentenceFileName == b.SentenceFileName && a.SentenceControl == b.SentenceControl
        && a.ProgramSort == b.ProgramSort && a.ProgramOption == b.ProgramOption
        && a.ProgramName == b.ProgramName && a.RepeatCount == b.RepeatCount
        && a.RepeatInterval == b.RepeatInterval;
}

} // namespace

void copySettingSection(const SettingData &from, SettingData &to, int section)
{
    switch (section) {
    case SettingSection::ProjectTexts:
        copyTexts(from, to);
        break;
    case SettingSection::CardSentencesPrograms:
        copyCard(from, to);
        break;
    case SettingSection::Steps:
        to.ProgramData = from.ProgramData;
        break;
    case SettingSection::All:
        copyTexts(from, to);
        copyCard(from, to);
        to.ProgramData = from.ProgramData;
        break;
    default:
        break;
    }
}

bool settingSectionEquals(const SettingData &a, const SettingData &b, int section)
{
    switch (section) {
    case SettingSection::ProjectTexts:
        return textsEqual(a, b);
    case SettingSection::CardSentencesPrograms:
        return cardEqual(a, b);
    case SettingSection::Steps:
        return a.ProgramData == b.ProgramData;
    case SettingSection::All:
        return textsEqual(a, b) && cardEqual(a, b) && a.ProgramData == b.ProgramData;
    default:
        // Kept on purpose: only numbers outside 0-100 are answered "equal"; a number inside that range
        // that names no section answers "different", as the comparison always did.
        return section < 0 || section > 100;
    }
}
