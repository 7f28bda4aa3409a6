#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "text/StyleCode.h"
#include "text/TextAttributes.h"

namespace zolt {

/// The styles of one block of text, numbered from 0 in the order in which they came.
///
/// A style that comes again soon usually has the number that it had: two are remembered for each of 512 hash values,
/// and one that was crowded out is stored again. Looking one up takes two comparisons, however many there are. There is
/// at most one for each byte of the block, so numbers fit 16 bits. One thread at a time; once sealed, any thread may
/// read.
class BlockStyles {
 public:
  using Number = std::uint16_t;

  BlockStyles() = default;
  /// Styles read back from a sealed block. Every index that a listed code has must exist in `listed`.
  BlockStyles(std::vector<StyleCode> codes, std::vector<TextAttributes> listed);

  /// The number of a packed style, which is added if it is not remembered.
  Number number(StyleCode packed);
  /// The number of any style.
  Number number(const TextAttributes& attributes);
  /// Frees the look-up index: nothing is added any more.
  void seal();

  std::size_t size() const { return m_codes.size(); }
  TextAttributes operator[](std::size_t number) const;

  const std::vector<StyleCode>& codes() const { return m_codes; }
  /// The styles that the listed codes refer to.
  const std::vector<TextAttributes>& listed() const { return m_listed; }

  std::size_t memoryBytes() const;

 private:
  Number add(StyleCode code);

  std::vector<StyleCode> m_codes;
  std::vector<TextAttributes> m_listed;
  std::vector<std::array<Number, 2>> m_latest;  // by hash, the latest two; empty once sealed
};

}  // namespace zolt
