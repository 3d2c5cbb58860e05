#pragma once

#include <QString>
#include <QStringView>

#include <optional>

/// Decimal text in the fixed-width form of the files: `digits` digits with leading zeros, a minus
/// sign in front of negative values (-1 with 3 digits is "-001").
QString zeroPadded(qint64 value, int digits);

/// The numeric pattern of `digits` zeros applied to a text: a text that reads as a number is
/// rounded to a whole number and zero-padded ("12" gives "0012", "1.5" gives "0002"); any other text
/// comes back unchanged.
QString applyZeroPattern(QStringView text, int digits);

/// The leading whole number of a text, as the classic Val() reads it: leading blanks, an optional
/// sign, then digits up to the first other character; no digits gives 0. Empty when the number
/// does not fit in 32 bits.
std::optional<qint32> leadingNumber(QStringView text);
