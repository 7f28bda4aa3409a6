#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "find/PairScan.h"

namespace zolt {

enum class LetterCase { Exact, AsciiFolded };

/// A string to find, either exactly or with ASCII letters in either case. Immutable: any thread may use it.
///
/// Text is scanned for the needle's two rarest bytes, a vector at a time, and compared only where both match. The worst
/// case, in text made for the purpose, is a comparison of the whole needle for each byte of text.
class PlainNeedle {
 public:
  /// `needle` is not empty.
  PlainNeedle(std::string_view needle, LetterCase letterCase);

  std::size_t size() const { return m_needle.size(); }

  /// The first occurrence in `text` at or after `from`; npos if there is none.
  std::size_t find(std::string_view text, std::size_t from) const;

 private:
  NeedleByte byteAt(std::size_t offset) const;
  NeedlePair rarestPair() const;
  bool matchesAt(const char* text) const;

  LetterCase m_case;
  std::string m_needle;  // in lower case if folded
  NeedlePair m_pair;
};

}  // namespace zolt
