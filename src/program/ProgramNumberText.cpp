#include "program/ProgramNumberText.h"

#include "setting/NumberText.h"
#include "setting/TextChecks.h"

namespace ProgramNumberText {

QString format(int number)
{
    return QLatin1Char('P') + zeroPadded(number, 3);
}

std::optional<int> numberAfterPrefix(QStringView text)
{
    const QStringView digits = text.mid(1);
    if (digits.isEmpty() || !IsDecimalText(digits) || digits.size() > 9)
        return std::nullopt;
    const int number = digits.toInt();
    if (number < First || number > Last)
        return std::nullopt;
    return number;
}

std::optional<int> parse(QStringView text)
{
    if (text.size() > 4 || text.isEmpty() || (text[0] != QLatin1Char('P') && text[0] != QLatin1Char('p')))
        return std::nullopt;
    return numberAfterPrefix(text);
}

} // namespace ProgramNumberText
