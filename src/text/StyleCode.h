#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "text/CompactColor.h"
#include "text/TextAttributes.h"

namespace zolt {

/// A style in eight bytes, so that text may change its style with every character.
///
/// A packed code is self-contained: a font face at the default size, underline and strikethrough, an opaque background
/// or none, and a foreground that is opaque, half transparent or clear. A style that does not fit (a component above
/// 1.0, another font size) is kept in a list by the holder of the codes; its code is its index there.
class StyleCode {
 public:
  enum class Opacity : std::uint8_t { Clear, Half, Opaque };

  struct Parts {
    CompactColor foreground{255, 255, 255};
    Opacity opacity = Opacity::Opaque;
    CompactColor background{};  // black where there is none
    bool hasBackground = false;
    bool isBold = false;
    bool isItalic = false;
    bool isUnderlined = false;
    bool isStruck = false;
  };

  /// The style of TextAttributes{}.
  constexpr StyleCode() : StyleCode(Parts{}) {}
  constexpr explicit StyleCode(const Parts& parts)
      : m_bits(parts.foreground.bits() | static_cast<std::uint64_t>(parts.opacity) << kOpacity |
               std::uint64_t{parts.background.bits()} << kBackground |
               static_cast<std::uint64_t>(parts.hasBackground) << kHasBackground |
               static_cast<std::uint64_t>(parts.isBold) << kBold |
               static_cast<std::uint64_t>(parts.isItalic) << kItalic |
               static_cast<std::uint64_t>(parts.isUnderlined) << kUnderlined |
               static_cast<std::uint64_t>(parts.isStruck) << kStruck) {}

  /// The packed code of `attributes`; nothing if they do not fit.
  static std::optional<StyleCode> of(const TextAttributes& attributes);
  /// The code of the style at `index` of the holder's list.
  static constexpr StyleCode listed(std::size_t index) { return fromBits(index | std::uint64_t{1} << kListed); }

  constexpr bool isListed() const { return (m_bits >> kListed) != 0; }
  constexpr std::size_t listIndex() const { return static_cast<std::size_t>(m_bits & ~(std::uint64_t{1} << kListed)); }
  /// The style of a packed code.
  TextAttributes attributes() const;

  constexpr std::uint64_t bits() const { return m_bits; }
  /// Any bits are safe: those of no valid code read as some style.
  static constexpr StyleCode fromBits(std::uint64_t bits) {
    StyleCode code;
    code.m_bits = bits;
    return code;
  }

  friend constexpr bool operator==(const StyleCode&, const StyleCode&) = default;

 private:
  // Where each part begins; the foreground is at 0.
  enum Shift : int {
    kOpacity = CompactColor::bitCount,
    kBackground = kOpacity + 2,
    kHasBackground = kBackground + CompactColor::bitCount,
    kBold,
    kItalic,
    kUnderlined,
    kStruck,
    kListed = 63,
  };

  constexpr bool has(Shift flag) const { return (m_bits >> flag & 1) != 0; }

  std::uint64_t m_bits = 0;
};

}  // namespace zolt
