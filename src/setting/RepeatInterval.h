#pragma once

/// A program's stored repeat interval on the one scale the device reads it with: 0 is off, 1-5 are
/// tens of seconds, 6 and up minutes over five (6 is one minute, 7 two).
struct RepeatInterval
{
    enum class Unit { Off, Seconds, Minutes };

    Unit unit = Unit::Off;
    int amount = 0; // in the unit: 10-50 seconds, 1 minute and up

    int seconds() const { return unit == Unit::Minutes ? amount * 60 : amount; }
};

RepeatInterval repeatInterval(int stored);
