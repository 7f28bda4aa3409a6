#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

namespace zolt {

/// Scans of text. Each returns the length of the longest prefix of `text` that has only the bytes named, `text.size()`
/// when all of it has. Short prefixes are found in a register, long ones with the widest vectors of the machine.

std::size_t longPlainPrefix(std::string_view text);
std::size_t longPrintablePrefix(std::string_view text);
std::size_t longNonAsciiPrefix(std::string_view text);

/// Bytes from 0x20 up: everything but C0 controls.
std::size_t controlFreePrefix(std::string_view text);

namespace detail {

inline constexpr std::uint64_t kHighBits = 0x8080808080808080ULL;
inline constexpr std::uint64_t kOnes = 0x0101010101010101ULL;
inline constexpr std::uint64_t kBlanks = 0x2020202020202020ULL;

// Bytes in little-endian order on every machine.
inline std::uint64_t eightBytes(const char* text) {
  std::uint64_t bytes = 0;
  std::memcpy(&bytes, text, sizeof bytes);
  if constexpr (std::endian::native == std::endian::big) bytes = __builtin_bswap64(bytes);
  return bytes;
}

inline std::uint32_t fourBytes(const char* text) {
  std::uint32_t bytes = 0;
  std::memcpy(&bytes, text, sizeof bytes);
  if constexpr (std::endian::native == std::endian::big) bytes = __builtin_bswap32(bytes);
  return bytes;
}

inline std::size_t firstMarked(std::uint64_t marks) {
  return static_cast<std::size_t>(std::countr_zero(marks)) / 8;
}

}  // namespace detail

/// Bytes 0x20 to 0x7F, TAB and LF: what the log display shows as it is.
inline std::size_t plainPrefix(std::string_view text) {
  if (text.size() >= 8) {
    const std::uint64_t bytes = detail::eightBytes(text.data());
    // Marks bytes below 0x20 and above 0x7F. A borrow corrupts only the bytes after the first mark.
    const std::uint64_t marks = ((bytes - detail::kBlanks) | bytes) & detail::kHighBits;
    if (marks != 0) {
      const std::size_t first = detail::firstMarked(marks);
      if (text[first] != '\n' && text[first] != '\t') return first;
    }
  }
  return longPlainPrefix(text);
}

/// Bytes 0x20 to 0x7E: the printable ASCII characters.
inline std::size_t printablePrefix(std::string_view text) {
  if (text.size() >= 8) {
    const std::uint64_t bytes = detail::eightBytes(text.data());
    // Marks bytes below 0x20 and above 0x7E. A borrow or carry corrupts only the bytes after the first mark.
    const std::uint64_t marks = ((bytes - detail::kBlanks) | bytes | (bytes + detail::kOnes)) & detail::kHighBits;
    if (marks != 0) return detail::firstMarked(marks);
  }
  return longPrintablePrefix(text);
}

/// Bytes from 0x80 up.
inline std::size_t nonAsciiPrefix(std::string_view text) {
  if (text.size() >= 8) {
    const std::uint64_t marks = ~detail::eightBytes(text.data()) & detail::kHighBits;
    if (marks != 0) return detail::firstMarked(marks);
  }
  return longNonAsciiPrefix(text);
}

}  // namespace zolt
