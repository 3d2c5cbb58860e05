#include "platform/CardSlotDetection.h"

#include "platform/CardSlotCriteria.h"
#include "platform/DriveInfo.h"
#include "setting/SharedState.h"

#include <algorithm>

namespace {

const QString Nothing = QStringLiteral("Nothing");

} // namespace

CardSlotDetection::CardSlotDetection(SharedState &state, const DriveSource &drives)
    : m_state(state)
    , m_drives(drives)
{ }

bool CardSlotDetection::DetectCardSlots(CardSlotMenu &menu)
{
    return detect(menu, m_drives.drives());
}

bool CardSlotDetection::detect(CardSlotMenu &menu, const QList<DriveInfo> &drives)
{
    for (int i = CardSlotMenu::Entries - 1; i >= 0; --i)
        menu.captions[i].clear();
    int count = 0;
    for (const DriveInfo &drive : drives) {
        if (!CardSlotCriteria::qualifies(drive))
            continue;
        menu.captions[count] = drive.path;
        menu.visible[count] = true;
        if (++count == CardSlotMenu::Entries)
            break;
    }
    if (count == 0) {
        menu.captions[0] = Nothing;
        m_state.CardSlotValid = false;
        menu.checked.fill(false);
        return false;
    }
    if (count >= 2) {
        // No choice is made; a slot the operator chose before keeps its mark where it is listed.
        for (int i = 0; i < CardSlotMenu::Entries; ++i)
            menu.checked[i] = m_state.CardSlotValid && !m_state.CardSlot.isEmpty()
                && menu.captions[i] == m_state.CardSlot;
        return false;
    }
    if (!check(menu.captions[0], drives)) {
        m_state.CardSlotValid = false;
        return false;
    }
    m_state.CardSlotValid = true;
    menu.checked.fill(false);
    menu.checked[0] = true;
    return true;
}

bool CardSlotDetection::CardCheck(const QString &path)
{
    return check(path, m_drives.drives());
}

bool CardSlotDetection::check(const QString &path, const QList<DriveInfo> &drives)
{
    for (const DriveInfo &drive : drives) {
        if (drive.path == path && drive.ready && drive.totalSize <= CardSlotCriteria::MaxCardBytes) {
            m_state.CardSlot = drive.path;
            m_state.CardTotalSize = QString::number(drive.totalSize);
            m_state.CardFreeSpace = QString::number(drive.freeSpace);
            m_state.CardAvailableSpace = QString::number(drive.availableSpace);
            m_state.CardSlotValid = true;
            return true;
        }
    }
    m_state.CardSlotValid = false;
    return false;
}

void CardSlotDetection::MenuClick(CardSlotMenu &menu, int index)
{
    if (menu.captions[index].isEmpty())
        return;
    m_state.CardSlot = menu.captions[index];
    menu.checked.fill(false);
    m_state.CardSlotValid = false;
    if (CardCheck(m_state.CardSlot)) {
        menu.checked[index] = true;
        m_state.CardSlotValid = true;
    }
}

void CardSlotDetection::DeviceEvent(CardSlotMenu &menu)
{
    const QList<DriveInfo> drives = m_drives.drives();
    detect(menu, drives);
    int matched = 0;
    for (int i = 0; i < CardSlotMenu::Entries; ++i) {
        const bool present = std::any_of(drives.begin(), drives.end(),
                                         [&](const DriveInfo &d) { return d.path == menu.captions[i]; });
        if (present) {
            ++matched;
            continue;
        }
        menu.visible[i] = i == 0;
        menu.captions[i].clear();
        if (menu.checked[i]) {
            menu.checked[i] = false;
            m_state.CardSlot.clear();
        }
    }
    // Detection has taken the marks off already when no card is left: the chosen slot's drive
    // being gone is what clears it.
    const bool slotPresent = std::any_of(drives.begin(), drives.end(),
                                         [&](const DriveInfo &d) { return d.path == m_state.CardSlot; });
    if (!slotPresent) {
        // With two or more cards left detection chooses none, so nothing else would clear it.
        m_state.CardSlot.clear();
        m_state.CardSlotValid = false;
    }
    if (matched == 0) {
        menu.captions[0] = Nothing;
        m_state.CardSlotValid = false;
    }
    if (menu.captions[0] == Nothing)
        m_state.CardSlotValid = false;
}
