#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "find/FindInterrupt.h"
#include "find/FindPattern.h"
#include "find/FindRange.h"
#include "text/TextPosition.h"

namespace zolt {

/// Finds a pattern in a text that arrives in chunks. They may be split anywhere, even within a match, a line, a
/// character or CR LF, without affecting the matches. One thread at a time.
///
/// The text should be UTF-8, but may be any bytes. Lines end with LF, CR or CR LF, and a match lies within one line.
/// Matches do not overlap: the search for the next one starts at the end of the last. Empty matches do not count.
///
/// A regular expression is matched against whole lines. A line longer than kLongLineBytes is searched in parts of that
/// size that overlap by kOverlapBytes; a match longer than the overlap may then be truncated at the end of a part, or
/// be missed. A scanner therefore holds at most one such part and 64 KiB or, for plain text, the length of the query.
class FindScanner {
 public:
  static constexpr std::size_t kLongLineBytes = 64 << 10;
  static constexpr std::size_t kOverlapBytes = 16 << 10;

  /// The first byte has the position `start` and begins a line. Nothing more is found once `interrupt`, which must
  /// outlive the scanner, has stopped the search.
  explicit FindScanner(FindPattern pattern, TextPosition start = {}, FindInterrupt* interrupt = nullptr);

  FindScanner(const FindScanner&) = delete;
  FindScanner& operator=(const FindScanner&) = delete;

  /// Appends to `matches`, in order, those that are certain after this chunk of the text.
  void feed(std::string_view chunk, std::vector<TextRange>& matches);

  /// Appends the remaining matches at the end of the text. Do not call `feed` afterwards.
  void finish(std::vector<TextRange>& matches);

  /// The number of bytes kept until more text arrives.
  std::size_t heldBytes() const { return m_text.size(); }

 private:
  void take(std::string_view bytes, std::vector<TextRange>& matches);
  void findPlain(const PlainNeedle& needle, std::vector<TextRange>& matches);
  void findInLines(const LineExpression& expression, std::size_t fresh, std::vector<TextRange>& matches);
  void findInParts(const LineExpression& expression, std::size_t lineEnd, std::vector<TextRange>& matches);
  void findInText(const LineExpression& expression, FindRange text, std::size_t to, std::size_t startsBefore,
                  std::vector<TextRange>& matches);
  std::size_t lineStart() const;
  void dropSearched();

  FindPattern m_pattern;
  FindInterrupt m_never;
  FindInterrupt* m_interrupt;
  std::string m_text;          // the text not searched yet, and the byte before it
  TextPosition m_position;     // of m_text's first byte
  std::size_t m_searched = 0;  // an offset in m_text: the next match begins here or later
};

}  // namespace zolt
