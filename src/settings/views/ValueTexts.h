#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace zolt {

/// A number without its fraction; the nearest end of the type's range for what lies outside, 0 for what is not a
/// number.
std::int64_t truncated(double value);

/// "14pt"; the fraction is dropped.
QString pointsText(double value);
/// With one decimal: "1.2".
QString decimalText(double value);
/// "57%"; the fraction is dropped, after the multiplication: 0.57 times 100 is a little less than 57, and deliberately
/// shown as "56%".
QString percentText(double value);

/// The whole number that a text means, the way a number formatter without any settings reads it: an optional sign,
/// digits, and a fraction that is rounded away, halves to the even neighbour. No group separators, no exponent. Nothing
/// when it is something else or outside the type's range.
std::optional<std::int64_t> wholeNumber(const QString& text);

}  // namespace zolt
