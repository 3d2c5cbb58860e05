#pragma once

#include <QAction>
#include <QList>
#include <QMenu>

/// Keeps a menu's hidden entries out of the menu. A hidden entry is still listed to screen readers
/// as long as it belongs to the menu, so it is taken out while hidden and put back in its place
/// when shown again.
class MenuEntries
{
public:
    MenuEntries() = default;
    /// Takes the menu's entries as they stand, in their order.
    explicit MenuEntries(QMenu *menu)
        : m_menu(menu)
        , m_entries(menu->actions())
    { }

    /// Puts exactly the entries that are set visible into the menu.
    void refresh()
    {
        if (!m_menu)
            return;
        for (QAction *entry : std::as_const(m_entries))
            m_menu->removeAction(entry);
        for (QAction *entry : std::as_const(m_entries)) {
            if (entry->isVisible())
                m_menu->addAction(entry);
        }
    }

private:
    QMenu *m_menu = nullptr;
    QList<QAction *> m_entries;
};
