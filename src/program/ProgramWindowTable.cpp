#include "program/ProgramWindowTable.h"

#include "widgets/WindowFrame.h"

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

ProgramWindowTable::Refusal ProgramWindowTable::refusalFor(int number) const
{
    if (m_count >= MaxOpen)
        return Refusal::EightOpen;
    return slotShowing(number) ? Refusal::AlreadyOpen : Refusal::None;
}

void ProgramWindowTable::occupy(int slot, QWidget *window, int number)
{
    ++m_count;
    ProgramWindows[slot] = window;
    ProgramWindowNumbers[slot] = static_cast<qint16>(number);
}

void ProgramWindowTable::release(int slot)
{
    if (slot < 1 || slot > MaxOpen || !ProgramWindows[slot])
        return;
    ProgramWindows[slot] = nullptr;
    ProgramWindowNumbers[slot] = 0;
    --m_count;
}

void ProgramWindowTable::closeAll()
{
    for (int slot = 1; slot <= MaxOpen; ++slot) {
        if (ProgramWindows[slot])
            closeWindowFrame(ProgramWindows[slot]);
    }
}
