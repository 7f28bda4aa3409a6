#pragma once

#include <cstdint>

namespace zolt::vt {

/// IDs in the screen's tables of styles, links and clusters. Style 0 is the default style; link 0 is no link.
using StyleId = std::uint16_t;
using LinkId = std::uint16_t;
using ClusterId = std::uint32_t;

/// A character with its attributes (style, link and protection), in 8 bytes. All zero is a blank cell.
///
/// From the lowest bit: the character or its cluster ID (21), whether it is a cluster (1), width (2), protection (1),
/// unused (7), style (16), link (16). A value.
class Cell {
 public:
  enum class Width : std::uint8_t {
    Narrow,
    Wide,    ///< the first half of a wide character
    Tail,    ///< the second half
    Filler,  ///< left blank in the last column because a wide character did not fit
  };

  constexpr Cell() = default;
  constexpr explicit Cell(std::uint64_t bits) : m_bits(bits) {}
  constexpr Cell(char32_t character, Width width, std::uint64_t attributes)
      : m_bits(character | static_cast<std::uint64_t>(width) << kWidthShift | attributes) {}

  static constexpr Cell cluster(ClusterId id, Width width, std::uint64_t attributes) {
    return Cell(id | kClusterBit | static_cast<std::uint64_t>(width) << kWidthShift | attributes);
  }
  /// Attributes in the form that `attributes()` returns.
  static constexpr std::uint64_t makeAttributes(StyleId style, LinkId link, bool isProtected) {
    return static_cast<std::uint64_t>(style) << kStyleShift | static_cast<std::uint64_t>(link) << kLinkShift |
           (isProtected ? kProtectedBit : 0);
  }

  constexpr std::uint64_t bits() const { return m_bits; }
  constexpr std::uint64_t attributes() const { return m_bits & kAttributes; }
  constexpr bool isBlank() const { return m_bits == 0; }
  /// Nothing was written here since it was erased. The cell may have a background colour.
  constexpr bool isErased() const { return (m_bits & (kContent | kClusterBit)) == 0 && width() == Width::Narrow; }
  constexpr bool isCluster() const { return (m_bits & kClusterBit) != 0; }
  /// The character, unless the cell is a cluster; 0 if nothing was written.
  constexpr char32_t character() const { return static_cast<char32_t>(m_bits & kContent); }
  constexpr ClusterId clusterId() const { return static_cast<ClusterId>(m_bits & kContent); }
  constexpr Width width() const { return static_cast<Width>(m_bits >> kWidthShift & 3); }
  constexpr bool isProtected() const { return (m_bits & kProtectedBit) != 0; }
  constexpr StyleId style() const { return static_cast<StyleId>(m_bits >> kStyleShift); }
  constexpr LinkId link() const { return static_cast<LinkId>(m_bits >> kLinkShift); }

  /// The cell as it is outside the last column, where a filler is just an erased cell.
  constexpr Cell withoutFiller() const {
    return width() == Width::Filler ? Cell(makeAttributes(style(), 0, false)) : *this;
  }
  constexpr Cell withWidth(Width width) const {
    return Cell((m_bits & ~(std::uint64_t{3} << kWidthShift)) | static_cast<std::uint64_t>(width) << kWidthShift);
  }
  constexpr Cell withStyle(StyleId style) const {
    return Cell((m_bits & ~kStyle) | static_cast<std::uint64_t>(style) << kStyleShift);
  }

  friend constexpr bool operator==(Cell, Cell) = default;

 private:
  static constexpr std::uint64_t kContent = (std::uint64_t{1} << 21) - 1;
  static constexpr std::uint64_t kClusterBit = std::uint64_t{1} << 21;
  static constexpr int kWidthShift = 22;
  static constexpr std::uint64_t kProtectedBit = std::uint64_t{1} << 24;
  static constexpr int kStyleShift = 32;
  static constexpr int kLinkShift = 48;
  static constexpr std::uint64_t kStyle = std::uint64_t{0xFFFF} << kStyleShift;
  static constexpr std::uint64_t kAttributes = kProtectedBit | std::uint64_t{0xFFFFFFFF} << kStyleShift;

  std::uint64_t m_bits = 0;
};
static_assert(sizeof(Cell) == 8);

}  // namespace zolt::vt
