#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "text/Color.h"

namespace zolt {

/// An opaque colour in 27 bits: each component one of 259 levels, n / 255 for n from 0 to 255 (ends included), and the
/// three others that the named colours of SGR use. Nearly every colour that a program asks for has this form.
class CompactColor {
 public:
  static constexpr int bitCount = 27;

  /// Black.
  constexpr CompactColor() = default;
  /// `red`, `green` and `blue` are 255ths.
  constexpr CompactColor(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
      : CompactColor(Levels{red, green, blue}) {}

  /// The compact form of `color`, its alpha ignored; nothing if it has none.
  static constexpr std::optional<CompactColor> of(const Color& color) {
    const auto red = levelOf(color.red);
    const auto green = levelOf(color.green);
    const auto blue = levelOf(color.blue);
    if (!red || !green || !blue) return std::nullopt;
    return CompactColor(Levels{*red, *green, *blue});
  }

  /// Exactly the components that `of` was given.
  constexpr Color color(double alpha = 1.0) const {
    return {component(m_bits), component(m_bits >> kLevelBits), component(m_bits >> 2 * kLevelBits), alpha};
  }

  /// Below 2^bitCount. Unknown levels read as 0.
  constexpr std::uint32_t bits() const { return m_bits; }
  static constexpr CompactColor fromBits(std::uint64_t bits) {
    CompactColor color;
    color.m_bits = static_cast<std::uint32_t>(bits & ((1U << bitCount) - 1));
    return color;
  }

  friend constexpr bool operator==(const CompactColor&, const CompactColor&) = default;

 private:
  using Levels = std::array<std::uint32_t, 3>;

  static constexpr int kLevelBits = 9;
  // From level 256 on.
  static constexpr std::array kNamedLevels{0.33, 0.5, 0.75};

  constexpr explicit CompactColor(const Levels& levels)
      : m_bits(levels[0] | levels[1] << kLevelBits | levels[2] << 2 * kLevelBits) {}

  static constexpr std::optional<std::uint32_t> levelOf(double component) {
    if (component >= 0 && component <= 1) {
      const auto nearest = static_cast<std::uint32_t>(component * 255.0 + 0.5);
      if (static_cast<double>(nearest) / 255.0 == component) return nearest;
    }
    for (std::size_t i = 0; i < kNamedLevels.size(); ++i) {
      if (kNamedLevels[i] == component) return static_cast<std::uint32_t>(256 + i);
    }
    return std::nullopt;
  }

  static constexpr double component(std::uint32_t bits) {
    const std::uint32_t level = bits & ((1U << kLevelBits) - 1);
    if (level < 256) return level / 255.0;
    return level - 256 < kNamedLevels.size() ? kNamedLevels[level - 256] : 0.0;
  }

  std::uint32_t m_bits = 0;
};

}  // namespace zolt
