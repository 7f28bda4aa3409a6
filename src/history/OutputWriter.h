#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "history/TextSnapshot.h"

namespace zolt {

/// Turns the blocks of a text, in their order, into the bytes of a file: the text as it is stored, with a LF for each
/// line end (LF, CR or CR LF), and with the styles where somebody knows how to write them.
///
/// What was lost reads as it is shown: kHistoryLostNotice and blanks. Not synchronised: one thread at a time.
class OutputWriter {
 public:
  /// Appends to `out` what makes the text that follows look like `to`, where until now it looked like `from`.
  using AppendStyle = void (*)(std::string& out, const TextAttributes& from, const TextAttributes& to);

  /// Without `appendStyle` the file is plain text.
  explicit OutputWriter(AppendStyle appendStyle = nullptr) : m_appendStyle(appendStyle) {}

  /// Appends the bytes of the next block, number `index` of `text`, to `out`. A style is written where it changes and
  /// only before text.
  void append(const TextSnapshot& text, std::size_t index, std::string& out);
  /// Appends what follows the last block: the way back to TextAttributes{}.
  void finish(std::string& out);

 private:
  void appendStyled(const TextBlock& block, std::string& out);
  std::string_view withoutRestOfLineEnd(std::string_view text) const;
  void appendLines(std::string_view text, std::string& out);

  AppendStyle m_appendStyle;
  TextAttributes m_style;
  bool m_afterReturn = false;  // the last byte was a CR: a LF now is part of a line end that has been written
};

}  // namespace zolt
