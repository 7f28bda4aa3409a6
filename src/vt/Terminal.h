#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "vt/Parser.h"
#include "vt/TerminalState.h"

namespace zolt::vt {

/// A terminal without a window: bytes of a program in, a screen and replies out.
///
/// Any bytes may come, cut anywhere: it makes no difference to the screen and the replies how they are cut. Nothing
/// that a program sends opens, runs or loads anything, or is sent back to it. Work and memory are in proportion to the
/// bytes and the size of the screen; the history is kept by a BlockStore. One thread at a time.
class Terminal {
 public:
  /// How long a synchronized update (mode 2026) may hold the picture back.
  static constexpr Milliseconds longestUpdate{150};

  Terminal(int rows, int columns);
  Terminal(int rows, int columns, TerminalSettings settings);
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal();

  /// Takes what a program has written. `now` is the time by any clock that never goes back.
  void feed(std::string_view bytes, Milliseconds now = Milliseconds{0});
  /// Another size, in cells, and that of a cell in pixels; 0 by 0 where there are none. Programs are told that asked.
  void resize(int rows, int columns, int cellWidth = 0, int cellHeight = 0);

  /// The bytes that tell the program of what the user does, by the modes it has set; none where there is nothing to
  /// tell. They are written to it as they are.
  std::string keyBytes(const KeyEvent& event) const;
  std::string mouseBytes(const MouseEvent& event);
  /// The wheel without mouse tracking: cursor keys on the alternate screen; `steps` away from the user are above 0.
  std::string wheelBytes(int steps) const;
  std::string pasteBytes(std::string_view text) const;
  std::string focusBytes(bool focused) const;

  /// Whether what is shown should stay as it was: an update goes on, which has not lasted too long.
  bool holdsPicture(Milliseconds now);
  /// The user's wish; programs that asked are told of a change.
  void setPrefersDark(bool prefersDark);
  /// What is in a clipboard, for the program that asked (TerminalEvents::clipboardReads); nothing is told where the
  /// settings do not allow it.
  void tellClipboard(ClipboardTarget target, std::string_view text);
  /// The theme's colours.
  Palette& palette() { return m_state.palette; }

  const Screen& screen() const { return m_state.screen; }
  Screen& screen() { return m_state.screen; }
  const TerminalState& state() const { return m_state; }

  /// What has to be written to the program, once.
  std::string takeReplies() { return std::exchange(m_state.replies, {}); }
  /// What has come up since it was last asked.
  TerminalEvents takeEvents() { return std::exchange(m_state.events, {}); }

 private:
  class Dispatcher;

  std::size_t feedRush(std::string_view bytes);

  TerminalState m_state;
  std::unique_ptr<Dispatcher> m_dispatcher;
  Parser m_parser;
  MouseReporter m_mouse;
};

}  // namespace zolt::vt
