#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "history/TextSnapshot.h"
#include "text/TextAttributes.h"

namespace zolt {

/// How a file shows the styles of a text, whose blocks are all of one kind. Not synchronised: one thread at a time.
class OutputStyles {
 public:
  virtual ~OutputStyles() = default;
  /// Appends to `out` what changes the style of the text before to that of run `run` of `block`.
  virtual void changeTo(const LineBlock& block, std::size_t run, std::string& out) = 0;
  /// Appends what changes the style back to that of no text.
  virtual void finish(std::string& out) = 0;
};

/// Converts the blocks of a text, in order, to the content of a file: the stored text with LF for each line end (LF, CR
/// or CR LF), and with its styles if that is wanted.
///
/// Lost text is written as it is shown: kHistoryLostNotice and blanks. Not synchronised: one thread at a time.
class OutputWriter {
 public:
  /// Appends to `out` what changes the style of the text that follows from `from` to `to`.
  using AppendStyle = void (*)(std::string& out, const TextAttributes& from, const TextAttributes& to);

  /// Writes plain text.
  OutputWriter() = default;
  /// Writes `styles`, too, unless that is null.
  explicit OutputWriter(std::unique_ptr<OutputStyles> styles) : m_styles(std::move(styles)) {}
  /// Writes the styles of a text whose blocks are of class TextBlock.
  explicit OutputWriter(AppendStyle appendStyle);

  /// Appends the next block, number `index` of `text`, to `out`. A style is written only where it changes and text
  /// follows.
  void append(const TextSnapshot& text, std::size_t index, std::string& out);
  /// Appends what comes after the last block.
  void finish(std::string& out);

 private:
  void appendStyled(const LineBlock& block, std::string& out);
  std::string_view withoutRestOfLineEnd(std::string_view text) const;
  void appendLines(std::string_view text, std::string& out);

  std::unique_ptr<OutputStyles> m_styles;
  bool m_afterReturn = false;  // the last byte was a CR: a LF now belongs to a line end already written
};

/// Writes the styles of a text whose blocks are of class TextBlock.
std::unique_ptr<OutputStyles> textOutputStyles(OutputWriter::AppendStyle appendStyle);

}  // namespace zolt
