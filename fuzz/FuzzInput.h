#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

#include "base/Fatal.h"

namespace zolt {

/// The bytes of one fuzzing run, consumed from the front: numbers first, the rest as text.
class FuzzInput {
 public:
  FuzzInput(const std::uint8_t* data, std::size_t size) : m_rest(reinterpret_cast<const char*>(data), size) {}

  bool empty() const { return m_rest.empty(); }

  /// The next byte; 0 when there is none left.
  unsigned byte() {
    if (m_rest.empty()) return 0;
    const auto value = static_cast<unsigned char>(m_rest.front());
    m_rest.remove_prefix(1);
    return value;
  }

  /// The next `length` bytes, or as many as are left.
  std::string_view text(std::size_t length) {
    const std::string_view taken = m_rest.substr(0, length);
    m_rest.remove_prefix(taken.size());
    return taken;
  }

  std::string_view rest() const { return m_rest; }

 private:
  std::string_view m_rest;
};

/// The end of a chunk of about `length` bytes of valid UTF-8, at the next boundary between code points.
inline std::size_t chunkEnd(std::string_view text, std::size_t length) {
  while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0) == 0x80) {
    ++length;
  }
  return length < text.size() ? length : text.size();
}

/// Stops the fuzzer, which then saves the input, unless `condition` holds.
inline void require(bool condition, std::string_view what) {
  precondition(condition, what);
}

}  // namespace zolt
