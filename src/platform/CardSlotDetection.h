#pragma once

#include "platform/DriveInfo.h"

#include <QList>
#include <QString>

#include <array>

class SharedState;

/// The ten entries of the "Card slot setting" menu, as detection leaves them.
struct CardSlotMenu
{
    static constexpr int Entries = 10;
    std::array<QString, Entries> captions;
    std::array<bool, Entries> visible {true};
    std::array<bool, Entries> checked {};
};

/// Finds the card slot among the PC's drives, checks the chosen one, and follows cards coming and
/// going. Works on the menu's model; the main window shows it.
class CardSlotDetection
{
public:
    CardSlotDetection(SharedState &state, const DriveSource &drives);

    /// Lists the qualifying drives (at most ten) and chooses one when it is the only one. True
    /// when a card slot was chosen and is valid.
    bool DetectCardSlots(CardSlotMenu &menu);

    /// Records the drive at `path` as the card slot when it exists, is ready and is small enough.
    bool CardCheck(const QString &path);

    /// The operator chose entry `index`.
    void MenuClick(CardSlotMenu &menu, int index);

    /// A card came or went. Entries whose drive is gone disappear; the chosen one's loss clears the
    /// card slot.
    void DeviceEvent(CardSlotMenu &menu);

private:
    // Each operation reads the drive list once and hands it on: a listing costs a statvfs per mount.
    bool detect(CardSlotMenu &menu, const QList<DriveInfo> &drives);
    bool check(const QString &path, const QList<DriveInfo> &drives);

    SharedState &m_state;
    const DriveSource &m_drives;
};
