#pragma once

#include <cstdint>
#include <map>
#include <optional>

namespace zolt {

/// The parts of a file that are free to be written again, in bytes. A value.
class FreeExtents {
 public:
  /// Adds [offset, offset + size), of which nothing is free yet.
  void add(std::uint64_t offset, std::uint64_t size);
  /// Takes `size` > 0 bytes out of the first part that has them; returns their offset, nothing if there is no such
  /// part.
  std::optional<std::uint64_t> take(std::uint64_t size);

 private:
  std::map<std::uint64_t, std::uint64_t> m_sizes;  // by offset; no two parts touch
};

}  // namespace zolt
