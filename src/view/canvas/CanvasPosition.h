#pragma once

#include <compare>
#include <cstdint>

namespace zolt {

/// A place in the text that a canvas shows, between two characters, as the number of characters before it.
struct CanvasPosition {
  std::uint64_t value = 0;

  constexpr CanvasPosition() = default;
  constexpr explicit CanvasPosition(std::uint64_t characters) : value(characters) {}

  friend constexpr auto operator<=>(const CanvasPosition&, const CanvasPosition&) = default;
  friend constexpr CanvasPosition operator+(CanvasPosition a, std::uint64_t characters) {
    return CanvasPosition(a.value + characters);
  }
  /// `characters` must not be more than there are before `a`.
  friend constexpr CanvasPosition operator-(CanvasPosition a, std::uint64_t characters) {
    return CanvasPosition(a.value - characters);
  }
  /// The number of characters from `b` to `a`, which must not be before it.
  friend constexpr std::uint64_t operator-(CanvasPosition a, CanvasPosition b) { return a.value - b.value; }
};

/// A range of text; `end` is not included.
struct CanvasRange {
  CanvasPosition begin;
  CanvasPosition end;

  constexpr bool empty() const { return begin >= end; }
  /// In characters.
  constexpr std::uint64_t length() const { return empty() ? 0 : end - begin; }
  friend constexpr bool operator==(const CanvasRange&, const CanvasRange&) = default;
};

}  // namespace zolt
