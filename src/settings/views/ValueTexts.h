#pragma once

#include <QString>
#include <cstdint>

namespace zolt {

/// Drops the fraction of a number. Saturates at the ends of the type's range; 0 for NaN.
std::int64_t truncated(double value);

/// "14pt"; the fraction is dropped.
QString pointsText(double value);
/// With one decimal: "1.2".
QString decimalText(double value);
/// "50%"; the fraction is dropped after the multiplication. 0.57 deliberately shows as "56%": times 100 it is a little
/// less than 57.
QString percentText(double value);
/// "60 s"; the fraction is dropped.
QString secondsText(double value);
/// A contrast ratio: "4.5:1"; "Off" up to 1, which every pair of colours has.
QString contrastText(double value);

}  // namespace zolt
