#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "history/TextSnapshot.h"

namespace zolt {

/// Converts the blocks of a text, in order, to the content of a file: the stored text with LF for each line end (LF, CR
/// or CR LF), and with its styles if there is a function that encodes them.
///
/// Lost text is written as it is shown: kHistoryLostNotice and blanks. Not synchronised: one thread at a time.
class OutputWriter {
 public:
  /// Appends to `out` what changes the style of the text that follows from `from` to `to`.
  using AppendStyle = void (*)(std::string& out, const TextAttributes& from, const TextAttributes& to);

  /// Without `appendStyle` the file is plain text.
  explicit OutputWriter(AppendStyle appendStyle = nullptr) : m_appendStyle(appendStyle) {}

  /// Appends the next block, number `index` of `text`, to `out`. A style is written only where it changes and text
  /// follows.
  void append(const TextSnapshot& text, std::size_t index, std::string& out);
  /// Appends what comes after the last block: the change back to TextAttributes{}.
  void finish(std::string& out);

 private:
  void appendStyled(const TextBlock& block, std::string& out);
  std::string_view withoutRestOfLineEnd(std::string_view text) const;
  void appendLines(std::string_view text, std::string& out);

  AppendStyle m_appendStyle;
  TextAttributes m_style;
  bool m_afterReturn = false;  // the last byte was a CR: a LF now belongs to a line end already written
};

}  // namespace zolt
