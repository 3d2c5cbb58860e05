#include "ProgramWindowTable.h"

#include <QMdiSubWindow>

int ProgramWindowTable::slotShowing(int number) const
{
    for (int slot = 1; slot <= MaxOpen; ++slot) {
        if (ProgramWindows[slot] && ProgramWindowNumbers[slot] == number)
            return slot;
    }
    return 0;
}

int ProgramWindowTable::firstFreeSlot() const
{
    for (int slot = 1; slot <= MaxOpen; ++slot) {
        if (!ProgramWindows[slot])
            return slot;
    }
    return 0;
}

void ProgramWindowTable::occupy(int slot, QWidget *window, int number)
{
    ProgramWindows[slot] = window;
    ProgramWindowNumbers[slot] = static_cast<qint16>(number);
}

void ProgramWindowTable::release(int slot)
{
    if (slot < 1 || slot > MaxOpen || !ProgramWindows[slot])
        return;
    ProgramWindows[slot] = nullptr;
    ProgramWindowNumbers[slot] = 0;
    --ProgramWindowCount;
}

void ProgramWindowTable::closeAll()
{
    for (int slot = 1; slot <= MaxOpen; ++slot) {
        QWidget *window = ProgramWindows[slot];
        if (!window)
            continue;
        // A window inside the main window closes with its frame.
        if (auto *frame = qobject_cast<QMdiSubWindow *>(window->parentWidget()))
            frame->close();
        else
            window->close();
    }
}
