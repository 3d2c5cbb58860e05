#include "ProgramWindowTable.h"

#include "WindowFrame.h"

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
        if (ProgramWindows[slot])
            closeWindowFrame(ProgramWindows[slot]);
    }
}
