#pragma once

#include <compare>
#include <cstdint>

namespace zolt {

/// A place in a text, between two characters, as the number of characters before it. Bytes, in the ASCII of a log.
struct TextPosition {
  std::uint64_t value = 0;

  constexpr TextPosition() = default;
  constexpr explicit TextPosition(std::uint64_t characters) : value(characters) {}

  /// `characters` before this place, or the start of the text if there are fewer.
  constexpr TextPosition backBy(std::uint64_t characters) const {
    return TextPosition(characters < value ? value - characters : 0);
  }

  friend constexpr auto operator<=>(const TextPosition&, const TextPosition&) = default;
  friend constexpr TextPosition operator+(TextPosition a, std::uint64_t characters) {
    return TextPosition(a.value + characters);
  }
  /// `characters` must not be more than there are before `a`.
  friend constexpr TextPosition operator-(TextPosition a, std::uint64_t characters) {
    return TextPosition(a.value - characters);
  }
  /// The number of characters from `b` to `a`, which must not be before it.
  friend constexpr std::uint64_t operator-(TextPosition a, TextPosition b) { return a.value - b.value; }
};

/// A range of a text; `end` is not included.
struct TextRange {
  TextPosition begin;
  TextPosition end;

  constexpr bool empty() const { return begin >= end; }
  /// In characters.
  constexpr std::uint64_t length() const { return empty() ? 0 : end - begin; }
  friend constexpr bool operator==(const TextRange&, const TextRange&) = default;
};

}  // namespace zolt
