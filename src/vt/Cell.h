#pragma once

#include <cstdint>

namespace zolt::vt {

/// The number of a style, a cluster or a link target in the screen's tables; 0 is the plain style, and no link.
using StyleId = std::uint16_t;
using LinkId = std::uint16_t;
using ClusterId = std::uint32_t;

/// One place of the grid: a character with its look, in 8 bytes. All zero is a place where nothing was written.
///
/// From the lowest bit: the character or the number of its cluster (21), whether it is a cluster (1), its width (2),
/// whether it is protected (1), 7 that are always 0, the style (16), the link (16). A value.
class Cell {
 public:
  enum class Width : std::uint8_t {
    Narrow,
    Wide,    ///< takes the next place, too
    Tail,    ///< that next place
    Filler,  ///< the last place of a row that a wide character did not fit in
  };

  constexpr Cell() = default;
  constexpr explicit Cell(std::uint64_t bits) : m_bits(bits) {}
  constexpr Cell(char32_t character, Width width, std::uint64_t look)
      : m_bits(character | static_cast<std::uint64_t>(width) << kWidthShift | look) {}

  static constexpr Cell cluster(ClusterId id, Width width, std::uint64_t look) {
    return Cell(id | kClusterBit | static_cast<std::uint64_t>(width) << kWidthShift | look);
  }
  /// Everything of a cell but its character: what `look()` gives.
  static constexpr std::uint64_t makeLook(StyleId style, LinkId link, bool isProtected) {
    return static_cast<std::uint64_t>(style) << kStyleShift | static_cast<std::uint64_t>(link) << kLinkShift |
           (isProtected ? kProtectedBit : 0);
  }

  constexpr std::uint64_t bits() const { return m_bits; }
  constexpr std::uint64_t look() const { return m_bits & kLook; }
  constexpr bool isBlank() const { return m_bits == 0; }
  /// Nothing was written here since it was erased; it may have a background.
  constexpr bool isErased() const { return (m_bits & (kContent | kClusterBit)) == 0 && width() == Width::Narrow; }
  constexpr bool isCluster() const { return (m_bits & kClusterBit) != 0; }
  /// The character where it is no cluster; 0 where nothing was written.
  constexpr char32_t character() const { return static_cast<char32_t>(m_bits & kContent); }
  constexpr ClusterId clusterId() const { return static_cast<ClusterId>(m_bits & kContent); }
  constexpr Width width() const { return static_cast<Width>(m_bits >> kWidthShift & 3); }
  constexpr bool isProtected() const { return (m_bits & kProtectedBit) != 0; }
  constexpr StyleId style() const { return static_cast<StyleId>(m_bits >> kStyleShift); }
  constexpr LinkId link() const { return static_cast<LinkId>(m_bits >> kLinkShift); }

  /// The cell where it is not the last of its row: a filler is one only there, and elsewhere a place that was erased.
  constexpr Cell settled() const { return width() == Width::Filler ? Cell(makeLook(style(), 0, false)) : *this; }
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
  static constexpr std::uint64_t kLook = kProtectedBit | std::uint64_t{0xFFFFFFFF} << kStyleShift;

  std::uint64_t m_bits = 0;
};
static_assert(sizeof(Cell) == 8);

}  // namespace zolt::vt
