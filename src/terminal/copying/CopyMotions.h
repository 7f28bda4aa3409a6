#pragma once

#include <cstdint>

#include "history/HistoryText.h"
#include "text/TextPosition.h"

namespace zolt {

/// What the keys of the copy mode do that move by text, after those of vi.
enum class CopyMotion : std::uint8_t {
  Left,  ///< within the line, as the next
  Right,
  WordStart,     ///< of the next word
  WordEnd,       ///< of this word, or of the next if it is there
  WordBack,      ///< to the start of this word, or of the one before
  BigWordStart,  ///< the same for words that only blanks separate
  BigWordEnd,
  BigWordBack,
  LineStart,
  LineText,  ///< the first character of the line that is not blank
  LineEnd,
  ParagraphBack,  ///< to the blank line before this paragraph, or the start of the text
  ParagraphForward,
  TextStart,
  TextEnd,
};

/// The place nearest to `position` that a cursor on a character can have: not in the middle of a cell's text, and on a
/// line end only where the line is empty.
TextPosition cursorPlace(const HistoryText& text, TextPosition position);

/// Where `motion` leads, `count` times, from a cursor's place. Lines are those of the text, however they are wrapped.
/// Linear in the text that is passed. Pure.
TextPosition moved(const HistoryText& text, TextPosition from, CopyMotion motion, int count = 1);

/// The end of the character that begins at `place`; `place` itself on a line end and at the text's end.
TextPosition characterEnd(const HistoryText& text, TextPosition place);

}  // namespace zolt
