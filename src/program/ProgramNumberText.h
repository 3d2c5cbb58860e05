#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Program numbers as the operator types and reads them: "P" and three digits, P001 to P064.
namespace ProgramNumberText {

constexpr int First = 1;
constexpr int Last = 64;

/// "P" and the number in three digits.
QString format(int number);

/// The number of a field text: at most 4 characters, "P" or "p" first, digits after, 1 to 64.
std::optional<int> parse(QStringView text);

/// The number "from the second character on" of a field text, as Open and Copy read it; empty
/// when not a whole number in 1 to 64.
std::optional<int> numberAfterPrefix(QStringView text);

/// The number fields' scroll bars run upside down: the top is the largest number.
inline int numberFromBar(int barValue)
{
    return Last + 1 - barValue;
}
inline int barFromNumber(int number)
{
    return Last + 1 - number;
}

} // namespace ProgramNumberText
