#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "find/PairScan.h"

namespace zolt {

enum class LetterCase { Exact, AsciiFolded };

/// A string of bytes to look for, as it is or with ASCII letters in either case. Immutable: any thread may use it.
///
/// Text is passed over by the needle's two rarest bytes, whole vectors at a time, and only where both stand is it
/// compared. At worst, in text made for it, that is the needle's length for each byte of text.
class PlainNeedle {
 public:
  /// `needle` is not empty.
  PlainNeedle(std::string_view needle, LetterCase letterCase);

  std::size_t size() const { return m_needle.size(); }

  /// Where the needle first stands in `text`, at `from` or after it; npos when it does not.
  std::size_t find(std::string_view text, std::size_t from) const;

 private:
  NeedleByte byteAt(std::size_t offset) const;
  NeedlePair rarestPair() const;
  bool standsAt(const char* text) const;

  LetterCase m_case;
  std::string m_needle;  // in small letters when folded
  NeedlePair m_pair;
};

}  // namespace zolt
