#pragma once

#include <bit>
#include <cstdint>

#include "text/Color.h"

namespace zolt {

/// Gathers values into one hash. Values that compare equal hash equal, -0.0 and 0.0 included.
class Hasher {
 public:
  void add(std::uint64_t value) { m_hash = std::rotl(m_hash ^ value, 23) * kMultiplier; }
  void add(double value) { add(std::bit_cast<std::uint64_t>(value + 0.0)); }  // adding zero turns -0.0 into 0.0
  void add(const Color& color) {
    add(color.red);
    add(color.green);
    add(color.blue);
    add(color.alpha);
  }

  std::uint64_t value() const { return m_hash ^ (m_hash >> 32); }

 private:
  static constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;  // 2^64 / golden ratio: Fibonacci hashing

  std::uint64_t m_hash = 1;
};

}  // namespace zolt
