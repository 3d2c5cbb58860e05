#pragma once

#include <QString>

#include <optional>

/// What the program window's number boxes and their upside-down scroll bars do with a value:
/// the wraps at the ends, the text shown, and what is stored.
namespace ProgramFieldRules {

// Interval bar: seconds 0-8 where 7 is OFF and 1 is 60 s; minutes 0-100 where 98 is 2 minutes.
constexpr int SecondsBarMax = 8;
constexpr int SecondsOffBar = 7;
constexpr int MinutesBarMax = 100;
constexpr int TwoMinutesBar = 98;

struct Interval
{
    QString text;
    int barValue = 0;
    qint16 repeatInterval = 0; // the stored scale: 0 OFF, 1-6 tens of seconds, 7-104 minutes + 5
    std::optional<int> endlessSeconds; // set when the Endless play interval is stored
    bool stores = true; // false when the change only shows the value and stores nothing
    bool refused = false; // "Incorrect value has been entered."
};

Interval secondsBarMoved(int value, bool endless);
Interval minutesBarMoved(int value);
/// The check made when the interval box loses the focus.
Interval checkInterval(const QString &text, bool minutes, bool endless);

/// A stored repeat interval as the window shows it: its unit, the box's text and the bar's value.
struct ShownInterval
{
    bool minutes = false;
    QString text;
    int barValue = 0;
};
/// The smallest stored value shown in minutes. Kept on purpose: opening the window shows a stored 7
/// in seconds ("70"); everywhere else 7 already means 2 minutes.
constexpr int OpensInMinutesFrom = 8;
constexpr int ShowsInMinutesFrom = 7;
ShownInterval shownInterval(int stored, int minutesFrom);

// Repeat count bar: 0-130, 129 is Endless (stored 0), 1 is 128 repetitions.
constexpr int CountBarMax = 130;
constexpr int EndlessCountBar = 129;

struct RepeatCount
{
    QString text;
    int barValue = 0;
    qint16 count = 0;
    bool refused = false;
};

RepeatCount countBarMoved(int value);
/// The check made when the repeat count box loses the focus.
RepeatCount checkRepeatCount(const QString &text);

/// The output level for a level bar value (0-9, wrapping at both ends): 9 minus the value.
int levelFromBar(int value);
/// A level typed in its box: one digit 1-8.
std::optional<int> parseLevel(const QString &text);

} // namespace ProgramFieldRules
