#pragma once

#include <optional>

#include "history/HistoryBlock.h"
#include "text/TextPosition.h"
#include "vt/history/ScrollbackText.h"

namespace zolt {

/// A mark of shell integration (OSC 133) before the character at a place of the text.
struct ShellMark {
  TextPosition position;
  HistoryMarkKind kind = HistoryMarkKind::PromptStart;
  int exitStatus = 0;  ///< of a CommandEnd
};

/// Finds prompts and the output of commands in a text by the marks of the shell. What lies far from where the search
/// begins, 64 MiB or so, is not found: it would take too long. One thread at a time.
class ShellMarks {
 public:
  /// `text` must outlive this.
  explicit ShellMarks(const vt::ScrollbackText& text) : m_text(text) {}

  /// The last prompt that begins before `position`, and the first one that begins after it.
  std::optional<ShellMark> promptBefore(TextPosition position) const;
  std::optional<ShellMark> promptAfter(TextPosition position) const;
  /// The last command line that was run, without its prompt.
  std::optional<TextRange> lastCommand() const;
  /// What the command has printed that `position` belongs to, be it in its prompt or in its output; at a prompt where
  /// nothing was run yet, the command before. Up to its end, or up to the next prompt or the text's end where the shell
  /// marks none. None before the first command.
  std::optional<TextRange> outputAt(TextPosition position) const;

 private:
  template <typename IsWanted>
  std::optional<ShellMark> lastBefore(TextPosition position, const IsWanted& isWanted) const;
  template <typename IsWanted>
  std::optional<ShellMark> firstFrom(TextPosition position, const IsWanted& isWanted) const;

  const vt::ScrollbackText& m_text;
};

}  // namespace zolt
