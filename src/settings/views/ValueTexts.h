#pragma once

#include <QString>
#include <cstdint>

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

}  // namespace zolt
