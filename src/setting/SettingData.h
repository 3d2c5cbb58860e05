#pragma once

#include "setting/ProgramSteps.h"

#include <QString>
#include <QtGlobal>

#include <array>

/// The sentence table's size: 128 or 512 entries, from bit 0x40 of the card's attribute word.
class SentenceTableSize
{
public:
    /// The most a table holds: every SettingData keeps this many sentence slots.
    static constexpr int Largest = 512;
    /// Bit of the card's attribute word: set for the 512 table, clear for the 128 table.
    static constexpr qint16 AttributeBit = 0x40;

    static constexpr SentenceTableSize ofAttribute(qint32 attribute)
    {
        return SentenceTableSize((attribute & AttributeBit) ? Largest : 128);
    }

    /// 128 or 512.
    constexpr int entries() const { return m_entries; }
    /// The table's last entry: 127 or 511.
    constexpr int lastEntry() const { return m_entries - 1; }
    constexpr bool is512() const { return m_entries == Largest; }
    /// The sentence dialog's 16-bit limit: 128 for the 128 table, one past its last entry so that
    /// the hidden entry 128 is read too, and 511 for the 512 table.
    constexpr qint16 limit() const { return is512() ? qint16(511) : qint16(128); }

    friend constexpr bool operator==(SentenceTableSize, SentenceTableSize) = default;

private:
    explicit constexpr SentenceTableSize(int entries)
        : m_entries(entries)
    { }
    int m_entries;
};

/// Everything one card carries: project texts, card name and attribute word, the sentence table
/// and the 64 programs. The setting file and the card control file are its serialised form.
struct SettingData
{
    static constexpr int Programs = 64;
    static constexpr int StepsPerProgram = int(ProgramSteps::Count);

    /// Bit of CardAttribute: the card holds 512 sentences instead of 128.
    static constexpr qint16 Attribute512Sentences = SentenceTableSize::AttributeBit;
    /// Bit of CardAttribute: the card's software write protection.
    static constexpr qint16 AttributeWriteProtect = 0x10;

    QString ProjectName;
    QString Creator;
    QString Explanation; // line breaks are CR LF, as in the file
    QString ControlFileName;
    QString CardName;
    qint16 CardAttribute = 0;
    std::array<QString, SentenceTableSize::Largest> SentenceControl;
    std::array<QString, SentenceTableSize::Largest> SentenceFileName;
    std::array<quint8, SentenceTableSize::Largest> SentenceState {};
    std::array<qint32, Programs> ProgramOption {};
    std::array<qint16, Programs> RepeatCount {};
    std::array<qint16, Programs> RepeatInterval {};
    std::array<QString, Programs> ProgramName;
    std::array<qint16, SentenceTableSize::Largest> ProgramSort {};
    std::array<ProgramSteps, Programs> ProgramData;

    SentenceTableSize sentenceTable() const { return SentenceTableSize::ofAttribute(CardAttribute); }

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
