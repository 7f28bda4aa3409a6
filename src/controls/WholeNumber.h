#pragma once

#include <QString>
#include <cstdint>
#include <optional>

namespace zolt {

/// Reads a whole number as a number formatter with default settings does: an optional sign, digits, and a fraction that
/// is rounded to a whole number, halves to even. No group separators and no exponent. Nothing for any other text, or
/// for a number outside the type's range.
std::optional<std::int64_t> wholeNumber(const QString& text);

}  // namespace zolt
