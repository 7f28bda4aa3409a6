#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "emulation/CellAttributes.h"

namespace zolt {

/// The colour of a cell in one role, foreground or background. Four bytes; equality is by case and payload.
class TerminalColor {
 public:
  /// In this order, which numbers them for hashing: `Default` is 0, `Indexed` 18.
  enum class Case : std::uint8_t {
    Default,
    Black,
    Red,
    Green,
    Yellow,
    Blue,
    Magenta,
    Cyan,
    White,
    BrightBlack,
    BrightRed,
    BrightGreen,
    BrightYellow,
    BrightBlue,
    BrightMagenta,
    BrightCyan,
    BrightWhite,
    Rgb,
    Indexed,
  };

  /// The terminal's default colour for the role.
  constexpr TerminalColor() = default;
  /// A case without a payload; `Rgb` and `Indexed` have constructors of their own.
  constexpr TerminalColor(Case plain) : m_case(plain) {}

  static constexpr TerminalColor rgb(std::uint8_t r, std::uint8_t g, std::uint8_t b) { return {Case::Rgb, {r, g, b}}; }
  static constexpr TerminalColor indexed(std::uint8_t index) { return {Case::Indexed, {index, 0, 0}}; }

  constexpr Case kind() const { return m_case; }
  constexpr std::uint8_t r() const { return m_payload[0]; }
  constexpr std::uint8_t g() const { return m_payload[1]; }
  constexpr std::uint8_t b() const { return m_payload[2]; }
  constexpr std::uint8_t index() const { return m_payload[0]; }

  friend constexpr bool operator==(const TerminalColor&, const TerminalColor&) = default;

 private:
  constexpr TerminalColor(Case kind, std::array<std::uint8_t, 3> payload) : m_payload(payload), m_case(kind) {}

  std::array<std::uint8_t, 3> m_payload{};  // r, g, b, or the index; zeros otherwise
  Case m_case = Case::Default;
};

static_assert(sizeof(TerminalColor) == 4);

/// One position of the character grid. The default value is the blank cell.
struct TerminalCell {
  /// One user-perceived character: an extended grapheme cluster in UTF-8.
  std::string character = " ";
  TerminalColor foregroundColor;
  TerminalColor backgroundColor;
  CellAttributes attributes;

  friend bool operator==(const TerminalCell&, const TerminalCell&) = default;
};

}  // namespace zolt

/// Hashes the case's number and then its payload: r, g, b, or the index.
template <>
struct std::hash<zolt::TerminalColor> {
  std::size_t operator()(const zolt::TerminalColor& color) const noexcept;
};
