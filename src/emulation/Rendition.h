#pragma once

#include <array>
#include <cstdint>
#include <span>

#include "text/Color.h"
#include "text/CompactColor.h"
#include "text/StyleCode.h"
#include "text/TextAttributes.h"

namespace zolt {

/// The graphic rendition, as SGR sequences change it. Initially as after SGR 0: white on clear, no flags.
class Rendition {
 public:
  /// Applies the codes of one SGR sequence in order (ECMA-48 8.3.117; 38 and 48 as XTerm reads them).
  ///
  /// Codes without a meaning here are ignored. A 38 or 48 whose colour is incomplete or unknown is ignored alone, on
  /// purpose: the codes after it are read as ordinary ones, so that "38;2;255" turns on dim. Stops the program for a
  /// palette index that color256 refuses.
  void apply(std::span<const std::int64_t> codes);

  /// The style of text in this rendition. Reverse is applied first, before hidden and dim: with the default colours it
  /// yields clear text on white, deliberately.
  TextAttributes attributes() const;
  /// Whether both colours are such that a packed code holds the style.
  bool fitsStyleCode() const {
    return m_colors[Foreground].kind != ColorKind::Exact && m_colors[Background].kind != ColorKind::Exact;
  }
  /// The same style, packed. It must fit.
  StyleCode styleCode() const;

 private:
  /// Exact only if the colour has no compact form: a component above 1.0, say.
  enum class ColorKind : std::uint8_t { Clear, Compact, Exact };
  struct RenditionColor {
    CompactColor compact;
    ColorKind kind = ColorKind::Clear;
  };
  enum Role : std::uint8_t { Foreground, Background };

  static constexpr RenditionColor compact(CompactColor color) { return {.compact = color, .kind = ColorKind::Compact}; }
  static constexpr CompactColor kWhite{255, 255, 255};

  RenditionColor& color(Role role) { return m_colors[role]; }
  const RenditionColor& color(Role role) const { return m_colors[role]; }
  void setExact(Role role, const Color& color);
  /// Sets the colour at the start of `codes`, which follow a 38 or 48. Returns how many of them it used.
  std::size_t setExtendedColor(Role role, std::span<const std::int64_t> codes);
  /// Which of the two colours is displayed in this role, with reverse applied.
  Role shown(Role role) const;
  Color exactColor(Role role) const;
  bool has(std::uint8_t flag) const { return (m_flags & flag) != 0; }

  std::array<RenditionColor, 2> m_colors{compact(kWhite), RenditionColor()};  // by role
  std::uint8_t m_flags = 0;
  std::array<Color, 2> m_exact;  // by role, of those that are exact
};

}  // namespace zolt
