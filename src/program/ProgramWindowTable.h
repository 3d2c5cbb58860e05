#pragma once

#include <QPointer>
#include <QWidget>

#include <array>

/// The open program edit windows: at most eight, each on a different program, in slots 1 to 8
/// filled first-free. The card edit window owns it and opens them; each window empties its slot on
/// closing. Windows hold it through a QPointer, as they may outlive the card edit window briefly.
class ProgramWindowTable : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    static constexpr int MaxOpen = 8;
    static constexpr int Slots = 10; // slots 0 and 9 stay unused

    std::array<QPointer<QWidget>, Slots> ProgramWindows;
    std::array<qint16, Slots> ProgramWindowNumbers {};

    /// The slot (1-8) whose window shows `number`, or 0.
    int slotShowing(int number) const;

    /// The first slot of 1-8 without a window, or 0 when all are taken.
    int firstFreeSlot() const;

    /// Why program `number` cannot have a window now, if it cannot.
    enum class Refusal { None, EightOpen, AlreadyOpen };
    Refusal refusalFor(int number) const;

    /// Records a window in a slot and counts it.
    void occupy(int slot, QWidget *window, int number);

    /// Empties the slot of a closing window and stops counting it.
    void release(int slot);

    /// How many program windows are open, 0 to 8.
    int ProgramWindowCount() const { return m_count; }

    /// Closes every window still in the table.
    void closeAll();

private:
    qint16 m_count = 0;
};
