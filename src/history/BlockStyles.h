#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "text/StyleCode.h"
#include "text/TextAttributes.h"

namespace zolt {

/// The styles of one block of text, numbered from 0 as they came. One that fits a code stands there once.
///
/// Finding the number of a style takes constant time, however many there are: at most one a byte, so that numbers fit
/// 16 bits. One thread at a time; once it is sealed any thread may read.
class BlockStyles {
 public:
  using Number = std::uint16_t;

  BlockStyles() = default;
  /// Styles as they were read back, in order. Those listed must be there.
  BlockStyles(std::vector<StyleCode> codes, std::vector<TextAttributes> listed);

  /// The number of a packed style, added when it is new.
  Number number(StyleCode packed);
  /// The number of any style.
  Number number(const TextAttributes& attributes);
  /// What comes next has been added for the last time: the index goes.
  void seal();

  std::size_t size() const { return m_codes.size(); }
  TextAttributes operator[](std::size_t number) const;

  const std::vector<StyleCode>& codes() const { return m_codes; }
  /// The styles that the listed ones among the codes name.
  const std::vector<TextAttributes>& listed() const { return m_listed; }

  std::size_t memoryBytes() const;

 private:
  Number add(StyleCode code);
  std::size_t bucketOf(StyleCode code) const;
  void enlargeIndex();

  std::vector<StyleCode> m_codes;
  std::vector<TextAttributes> m_listed;
  std::vector<std::uint32_t> m_buckets;  // hash -> number + 1, 0 for none; a power of two of them
};

}  // namespace zolt
