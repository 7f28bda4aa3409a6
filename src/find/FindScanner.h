#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "find/FindInterrupt.h"
#include "find/FindMatch.h"
#include "find/FindPattern.h"

namespace zolt {

/// Finds a pattern in a text that comes in pieces, cut anywhere: within a match, a line, a character, or CR LF. How it
/// was cut makes no difference to what is found. One thread at a time.
///
/// The text is bytes, meant to be UTF-8; lines end in LF, CR or CR LF. A match lies within one line. Matches do not
/// overlap: the leftmost is taken first, and the next is looked for after it. A regular expression's empty matches are
/// no matches.
///
/// A regular expression is matched against whole lines, and against a line of more than kLongLineBytes in parts of that
/// size that overlap by kOverlapBytes. There a match longer than the overlap may be cut off where a part ends, or be
/// missed. So no more is held than such a part and 64 KiB, or than the query for plain text.
class FindScanner {
 public:
  static constexpr std::size_t kLongLineBytes = 64 << 10;
  static constexpr std::size_t kOverlapBytes = 16 << 10;

  /// The first byte that is fed has the position `start`, and begins a line. Once `interrupt`, which must outlive the
  /// scanner, is given, nothing more is found.
  explicit FindScanner(FindPattern pattern, std::uint64_t start = 0, FindInterrupt* interrupt = nullptr);

  FindScanner(const FindScanner&) = delete;
  FindScanner& operator=(const FindScanner&) = delete;

  /// Takes the next piece and appends the matches that are certain by now to `matches`, in their order in the text.
  void feed(std::string_view piece, std::vector<FindMatch>& matches);

  /// The text is at its end: appends what is left to be found. Nothing may be fed afterwards.
  void finish(std::vector<FindMatch>& matches);

  /// How many bytes of text wait for what follows them.
  std::size_t heldBytes() const { return m_text.size(); }

 private:
  void take(std::string_view bytes, std::vector<FindMatch>& matches);
  void findPlain(const PlainNeedle& needle, std::vector<FindMatch>& matches);
  void findInLines(const LineExpression& expression, std::size_t fresh, std::vector<FindMatch>& matches);
  void findInParts(const LineExpression& expression, std::size_t lineEnd, std::vector<FindMatch>& matches);
  void findInText(const LineExpression& expression, FindRange text, std::size_t to, std::size_t startsBefore,
                  std::vector<FindMatch>& matches);
  std::size_t lineStart() const;
  void dropSearched();

  FindPattern m_pattern;
  FindInterrupt m_never;
  FindInterrupt* m_interrupt;
  std::string m_text;          // what is not searched yet, and the byte before it
  std::uint64_t m_position;    // of m_text's first byte
  std::size_t m_searched = 0;  // in m_text: matches begin here or later
};

}  // namespace zolt
