#pragma once

#include <string_view>

namespace zolt {

/// Stops the program: writes "zolt: fatal: " and `reason` as one line to standard error and aborts.
///
/// For broken preconditions that cannot occur in normal use. Never returns and never unwinds; any thread may call it.
[[noreturn]] void fatalError(std::string_view reason) noexcept;

/// Stops the program with `reason` unless `condition` holds.
inline void precondition(bool condition, std::string_view reason) noexcept {
  if (!condition) [[unlikely]] {
    fatalError(reason);
  }
}

}  // namespace zolt
