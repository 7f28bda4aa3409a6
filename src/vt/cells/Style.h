#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace zolt::vt {

/// A colour as a program specifies it: the default, one of the palette's 256, or a direct colour. A value of 4 bytes.
class CellColor {
 public:
  enum class Kind : std::uint8_t { Default, Indexed, Direct };

  constexpr CellColor() = default;
  static constexpr CellColor indexed(std::uint8_t index) { return CellColor(Kind::Indexed, index); }
  static constexpr CellColor direct(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return CellColor(Kind::Direct, static_cast<std::uint32_t>(red << 16 | green << 8 | blue));
  }
  static constexpr CellColor fromBits(std::uint32_t bits) {
    CellColor color;
    color.m_bits = bits;
    return color;
  }

  constexpr Kind kind() const { return static_cast<Kind>(m_bits >> 24); }
  constexpr std::uint8_t index() const { return static_cast<std::uint8_t>(m_bits & 0xFF); }
  constexpr std::uint8_t red() const { return static_cast<std::uint8_t>(m_bits >> 16 & 0xFF); }
  constexpr std::uint8_t green() const { return static_cast<std::uint8_t>(m_bits >> 8 & 0xFF); }
  constexpr std::uint8_t blue() const { return static_cast<std::uint8_t>(m_bits & 0xFF); }
  constexpr std::uint32_t bits() const { return m_bits; }

  friend constexpr bool operator==(CellColor, CellColor) = default;

 private:
  constexpr CellColor(Kind kind, std::uint32_t value) : m_bits(static_cast<std::uint32_t>(kind) << 24 | value) {}

  std::uint32_t m_bits = 0;
};

/// In the order of SGR 4's sub-parameter.
enum class Underline : std::uint16_t { None, Single, Double, Curly, Dotted, Dashed };

/// Bits of `Style::flags`: what SGR sets apart from colours and the underline.
enum StyleFlag : std::uint16_t {
  kBold = 1 << 0,
  kFaint = 1 << 1,
  kItalic = 1 << 2,
  kBlink = 1 << 3,
  kRapidBlink = 1 << 4,
  kInverse = 1 << 5,
  kHidden = 1 << 6,
  kStruck = 1 << 7,
  kOverlined = 1 << 8,
};

/// The rendition of a cell, as set by SGR (ECMA-48 8.3.117) and its common extensions. A value.
struct Style {
  CellColor foreground{};
  CellColor background{};
  CellColor underlineColor{};  ///< default: the foreground
  std::uint16_t flags = 0;     ///< StyleFlag bits
  Underline underline = Underline::None;

  using Words = std::array<std::uint64_t, 2>;
  constexpr Words words() const { return std::bit_cast<Words>(*this); }
  friend constexpr bool operator==(const Style& one, const Style& other) { return one.words() == other.words(); }
};
// No padding: styles are compared, hashed and copied as two words, for each change of colours that a program makes.
static_assert(std::has_unique_object_representations_v<Style> && sizeof(Style) == sizeof(Style::Words));

struct StyleHash {
  std::size_t operator()(const Style& style) const {
    constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;
    const auto [first, second] = style.words();
    const std::uint64_t colors = first * kMultiplier;
    const std::uint64_t mixed = (colors ^ second ^ colors >> 29) * kMultiplier;
    return static_cast<std::size_t>(mixed ^ mixed >> 32);
  }
};

}  // namespace zolt::vt
