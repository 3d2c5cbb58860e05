#pragma once

#include "setting/SettingData.h"
#include "setting/TextEncoding.h"

#include <QObject>
#include <QString>

/// The one object that holds what every window and routine shares: the three SettingData
/// instances and the values beside them. main() creates it and hands it on by reference;
/// tests create their own.
class SharedState : public QObject
{
    Q_OBJECT

public:
    explicit SharedState(QString appPath, TextEncoding encoding = TextEncoding::platformDefault());

    /// Committed copy: what the writers serialise and what the unsaved-changes test compares.
    SettingData Setting;
    /// Working copy that the windows show and change.
    SettingData SettingBuffer;
    /// Snapshot of Setting taken after new, open and save.
    SettingData SavedSetting;

    QString SentencePath; // PC folder of the sentence files, normally with a trailing separator
    bool SurveillanceFile = true; // carry the 1 kHz test tone on the card
    QString ProjectFileName;
    QString ProjectFilePath;
    QString ProjectFolder;
    QString CurrentFilePath; // empty while no project is open in the card edit window

    /// The program's own folder: SoundTmp, the project folders, NewProject and the test tone.
    QString AppPath;

    QString CardSlot; // path of the chosen card drive; empty when none
    bool CardSlotValid = false;
    QString CardTotalSize;
    QString CardFreeSpace;
    QString CardAvailableSpace;
    bool EditWindowLoaded = false;
    /// The program whose steps the step window opened last shows (1-64).
    int StepProgramNumber = 0;

    /// Code page of setting files and card control files.
    TextEncoding Encoding;

    /// Resets everything to a new project and takes the saved snapshot.
    void NewSetting();

    void CopyBufferToSetting(int section)
    {
        copySettingSection(SettingBuffer, Setting, section);
        emit settingCommitted(section);
    }
    void CopySettingToBuffer(int section)
    {
        copySettingSection(Setting, SettingBuffer, section);
        emit workingCopyReverted(section);
    }
    bool SettingEqualsBuffer(int section) const
    {
        return settingSectionEquals(Setting, SettingBuffer, section);
    }
    void TakeSavedSnapshot() { SavedSetting = Setting; }
    bool SettingEqualsSaved() const
    {
        return settingSectionEquals(Setting, SavedSetting, SettingSection::All);
    }

    /// The program's folder followed by the separator: the sentence folder of a new project.
    QString appFolderWithSeparator() const;

signals:
    /// The card slot, or whether it holds a usable card, may have changed: a card came or went, or
    /// the operator chose another drive.
    void cardSlotChanged();
    /// A section of the working copy was committed into the committed copy.
    void settingCommitted(int section);
    /// A section of the working copy was put back to the committed copy, its edits discarded.
    void workingCopyReverted(int section);
    /// A program copy replaced program `number` (1-64) in both copies.
    void programReplaced(int number);
};
