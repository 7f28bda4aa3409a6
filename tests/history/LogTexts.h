#pragma once

#include <string>
#include <vector>

#include "history/NaiveLog.h"
#include "history/TextStorage.h"
#include "text/RandomText.h"

namespace zolt {

/// A storage and a naive log with the same text.
struct Log {
  TextStorage storage;
  NaiveLog naive;

  /// Appends `text` in one call, or byte by byte.
  void append(std::string_view text);
  void appendByBytes(std::string_view text);
};

/// What a log is made of: short and long lines, tabs and line ends of every kind.
extern const std::span<const Piece> logAlphabet;

/// Texts of several blocks: many short lines, one endless line, only tabs, only line ends, a mixture...
struct NamedText {
  const char* name;
  std::string text;
};
std::vector<NamedText> severalBlocksOfText();

/// Short texts with all kinds of line ends and tabs, to be placed across block boundaries.
std::vector<std::string> boundaryEndings();

}  // namespace zolt
