#include "text/GraphemeClusters.h"

#include <utf8proc.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <vector>

namespace zolt {

namespace {

// One bit for each character of the Basic Multilingual Plane: a call to utf8proc costs as much as parsing ten bytes.
class JoinTable {
 public:
  enum class Side { Before, After };

  explicit JoinTable(Side side) : m_side(side) {
    for (char32_t scalar = 0x80; scalar < kPlane; ++scalar) {
      if (lookUp(scalar)) m_bits[scalar / 64] |= std::uint64_t{1} << (scalar % 64);
    }
  }

  bool joins(char32_t scalar) const {
    return scalar < kPlane ? (m_bits[scalar / 64] >> (scalar % 64) & 1) != 0 : lookUp(scalar);
  }

 private:
  static constexpr char32_t kPlane = 0x10000;
  static constexpr utf8proc_int32_t kLetter = 'a';

  bool lookUp(char32_t scalar) const {
    const auto codePoint = static_cast<utf8proc_int32_t>(scalar);
    return m_side == Side::Before ? !utf8proc_grapheme_break(kLetter, codePoint)
                                  : !utf8proc_grapheme_break(codePoint, kLetter);
  }

  Side m_side;
  std::array<std::uint64_t, kPlane / 64> m_bits{};
};

}  // namespace

bool joinsAsciiBefore(char32_t scalar) {
  static const JoinTable table(JoinTable::Side::Before);
  return table.joins(scalar);
}

bool joinsAsciiAfter(char32_t scalar) {
  static const JoinTable table(JoinTable::Side::After);
  return table.joins(scalar);
}

std::size_t longClusterEnd(std::string_view text, std::size_t position) {
  std::size_t length = 0;
  auto before = static_cast<utf8proc_int32_t>(scalarAt(text, position, length));
  utf8proc_int32_t state = 0;
  for (position += length; position < text.size(); position += length) {
    const auto after = static_cast<utf8proc_int32_t>(scalarAt(text, position, length));
    if (utf8proc_grapheme_break_stateful(before, after, &state)) break;
    before = after;
  }
  return position;
}

bool continuesCluster(std::u32string_view cluster, char32_t next) {
  utf8proc_int32_t state = 0;
  for (std::size_t i = 1; i < cluster.size(); ++i) {
    utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(cluster[i - 1]),
                                     static_cast<utf8proc_int32_t>(cluster[i]), &state);
  }
  return !utf8proc_grapheme_break_stateful(static_cast<utf8proc_int32_t>(cluster.back()),
                                           static_cast<utf8proc_int32_t>(next), &state);
}

ComposedStart composedStart(std::string_view cluster) {
  std::vector<utf8proc_int32_t> scalars;
  std::size_t length = 0;
  for (std::size_t position = 0; position < cluster.size(); position += length) {
    const auto scalar = static_cast<utf8proc_int32_t>(scalarAt(cluster, position, length));
    std::array<utf8proc_int32_t, 8> parts{};  // canonical decompositions are at most 4 long
    int boundary = UTF8PROC_BOUNDCLASS_START;
    const auto written =
        utf8proc_decompose_char(scalar, parts.data(), std::ssize(parts), UTF8PROC_DECOMPOSE, &boundary);
    scalars.insert(scalars.end(), parts.begin(), parts.begin() + written);
  }
  // Canonical ordering: the marks between two starters are sorted, stably, by combining class (D109).
  const auto classOf = [](utf8proc_int32_t scalar) { return utf8proc_get_property(scalar)->combining_class; };
  const auto isStarter = [&](utf8proc_int32_t scalar) { return classOf(scalar) == 0; };
  for (auto marks = scalars.begin(); marks != scalars.end();) {
    marks = std::find_if_not(marks, scalars.end(), isStarter);
    const auto end = std::find_if(marks, scalars.end(), isStarter);
    std::stable_sort(marks, end, [&](auto left, auto right) { return classOf(left) < classOf(right); });
    marks = end;
  }
  const auto count = utf8proc_normalize_utf32(scalars.data(), std::ssize(scalars),
                                              static_cast<utf8proc_option_t>(UTF8PROC_COMPOSE | UTF8PROC_STABLE));
  return {.first = static_cast<char32_t>(scalars[0]), .alone = count == 1};
}

}  // namespace zolt
