#pragma once

#include <cstdint>

#include "base/Fatal.h"

namespace zolt {

/// Signed 64-bit arithmetic that stops the program instead of wrapping around.
[[nodiscard]] inline std::int64_t checkedAdd(std::int64_t a, std::int64_t b) noexcept {
  std::int64_t result = 0;
  precondition(!__builtin_add_overflow(a, b, &result), "arithmetic overflow in an addition");
  return result;
}

[[nodiscard]] inline std::int64_t checkedMultiply(std::int64_t a, std::int64_t b) noexcept {
  std::int64_t result = 0;
  precondition(!__builtin_mul_overflow(a, b, &result), "arithmetic overflow in a multiplication");
  return result;
}

}  // namespace zolt
