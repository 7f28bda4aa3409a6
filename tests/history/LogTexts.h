#pragma once

#include <string>
#include <vector>

#include "history/NaiveLog.h"
#include "history/TextStorage.h"
#include "text/RandomText.h"

namespace zolt {

/// A storage and the naive log beside it, given the same.
struct Log {
  TextStorage storage;
  NaiveLog naive;

  /// Appends `text` in one call, or one call a byte.
  void append(std::string_view text);
  void appendByBytes(std::string_view text);
};

/// What a log is made of: short and long lines, tabs and line ends of every kind.
extern const std::span<const Piece> logAlphabet;

/// Named texts of several blocks: many short lines, one endless line, tabs only, line ends only, all of it mixed.
struct NamedText {
  const char* name;
  std::string text;
};
std::vector<NamedText> severalBlocksOfText();

/// Short texts to put at the end of a block so that they reach over it: every line end and tab.
std::vector<std::string> tellingEndings();

}  // namespace zolt
