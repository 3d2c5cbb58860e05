#pragma once

#include <QString>
#include <QtGlobal>

#include <array>

/// Everything one card carries: project texts, card name and attribute word, the sentence table
/// and the 64 programs. The setting file and the card control file are its serialised form.
struct SettingData
{
    static constexpr int SentenceSlots = 512;
    static constexpr int Programs = 64;
    static constexpr int StepsPerProgram = 128;

    /// Bit of CardAttribute: the card holds 512 sentences instead of 128.
    static constexpr qint16 Attribute512Sentences = 0x40;
    /// Bit of CardAttribute: the card's software write protection.
    static constexpr qint16 AttributeWriteProtect = 0x10;

    QString ProjectName;
    QString Creator;
    QString Explanation; // line breaks are CR LF, as in the file
    QString ControlFileName;
    QString CardName;
    qint16 CardAttribute = 0;
    std::array<QString, SentenceSlots> SentenceControl;
    std::array<QString, SentenceSlots> SentenceFileName;
    std::array<quint8, SentenceSlots> SentenceState {};
    std::array<qint32, Programs> ProgramOption {};
    std::array<qint16, Programs> RepeatCount {};
    std::array<qint16, Programs> RepeatInterval {};
    std::array<QString, Programs> ProgramName;
    std::array<qint16, SentenceSlots> ProgramSort {};
    std::array<std::array<QString, StepsPerProgram>, Programs> ProgramData;

    /// 128 or 512, from bit 0x40 of the attribute word.
    int sentenceCapacity() const { return capacityFor(CardAttribute); }
    static int capacityFor(qint32 attribute) { return (attribute & Attribute512Sentences) ? 512 : 128; }

    /// Fills every field with the values of a new project.
    void resetToNewProject();
};

/// Sections of SettingData that the edit windows commit and compare as a whole.
namespace SettingSection {
constexpr int ProjectTexts = 0;
constexpr int CardSentencesPrograms = 1;
constexpr int Steps = 2;
constexpr int All = 100;
} // namespace SettingSection

/// Copies one section from `from` into `to`; unknown section numbers do nothing.
void copySettingSection(const SettingData &from, SettingData &to, int section);

/// True when both hold the same values in the section; unknown section numbers compare equal.
bool settingSectionEquals(const SettingData &a, const SettingData &b, int section);
