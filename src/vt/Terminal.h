#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "base/Result.h"
#include "vt/TerminalRecord.h"
#include "vt/input/Keyboard.h"
#include "vt/parser/Parser.h"
#include "vt/snapshot/ScreenSnapshot.h"
#include "vt/state/TerminalState.h"

namespace zolt::vt {

/// A terminal without a window: takes a program's output, and produces a screen and replies.
///
/// Input may be any bytes, and how it is split makes no difference to the screen and the replies. Nothing in it can
/// open, run or load anything, or is echoed back to the program. Takes time and memory linear in the input and the size
/// of the screen; the scrollback is kept in a BlockStore. One thread at a time.
class Terminal {
 public:
  /// How long a synchronized update (mode 2026) may hold the frame.
  static constexpr Milliseconds maxUpdate{150};

  explicit Terminal(const TerminalSize& size);
  Terminal(const TerminalSize& size, TerminalSettings settings);
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;
  ~Terminal();

  /// Processes a program's output. `now` is the time of any monotonic clock.
  void feed(std::string_view bytes, Milliseconds now = Milliseconds{0});
  /// Changes the size, and reports it to programs that have asked for that.
  void resize(const TerminalSize& size);

  /// The bytes to write to the program for the user's input, in the current modes. Empty if nothing is sent.
  std::string keyBytes(const KeyEvent& event) const;
  std::string mouseBytes(const MouseEvent& event);
  /// The wheel without mouse tracking: cursor keys on the alternate screen. `steps` is positive away from the user.
  std::string wheelBytes(int steps) const;
  std::string pasteBytes(std::string_view text) const;
  std::string focusBytes(bool focused) const;

  /// Whether the last frame should stay on display, because a synchronized update has begun and not yet timed out.
  bool holdsFrame(Milliseconds now);
  /// Sets the colour scheme, and reports a change to programs that have asked for that.
  void setPrefersDark(bool prefersDark);
  /// What the program may do from now on; see TerminalSettings. It stays on an alternate screen that it is on.
  void allowAlternateScreen(bool allowed) { m_state.settings.allowAlternateScreen = allowed; }
  void allowWindowRequests(bool allowed) { m_state.settings.allowWindowRequests = allowed; }
  /// The cursor that the user has set.
  void setUserCursor(const CursorStyle& style) { m_state.settings.cursor = style; }
  /// Answers a query (TerminalEvents::clipboardReads), if the settings allow it.
  void reportClipboard(ClipboardTarget target, std::string_view text);
  /// The theme's colours.
  Palette& palette() { return m_state.palette; }

  const Screen& screen() const { return m_state.screen; }
  Screen& screen() { return m_state.screen; }
  const TerminalState& state() const { return m_state; }

  /// What is shown now. Rows that have not changed since the last call are shared with its result.
  std::shared_ptr<const ScreenSnapshot> snapshot() { return m_snapshots.make(m_state); }

  /// The replies since the last call, to be written to the program.
  std::string takeReplies() { return std::exchange(m_state.replies, {}); }
  /// The events since the last call.
  TerminalEvents takeEvents() { return std::exchange(m_state.events, {}); }

  /// Everything but the scrollback, in a few KiB: both grids with their styles, links and marks, the rows below them,
  /// cursors, modes, tab stops, stacks, colours, titles, folder and progress, the input that is incomplete (in the
  /// middle of a sequence, a string or a character), and the mouse. Of the scrollback: how far it goes in lines and
  /// bytes, and whether the screen's first row continues its last line. Starts with a version number, and has no
  /// checksum.
  ///
  /// Not kept: the settings, the scrollback's limit, and replies and events that nobody has taken.
  std::string saved() const;
  /// The terminal that `bytes` were saved from. Fed the same, it does the same; a synchronized update goes on at `now`,
  /// the time of the clock that is given to `feed`. The scrollback is empty and begins where the saved one ended, so
  /// that the numbers of lines and positions go on; no rows come back from it when the screen grows. Colours and titles
  /// are those of the terminal, although no events tell; a theme, a colour scheme or a size that has changed since is
  /// set as for any terminal.
  ///
  /// Fails with the reason if `bytes` are of a newer version or not a saved terminal. Safe for any bytes, in time and
  /// memory in proportion to them and to the size of the screen, which has the limits of Screen.
  static Result<std::unique_ptr<Terminal>> restored(std::string_view bytes, TerminalSettings settings,
                                                    Milliseconds now = Milliseconds{0});
  /// The terminal with its scrollback as it is now.
  TerminalRecord record() const { return {.state = saved(), .history = m_state.screen.scrollback().view()}; }
  /// The terminal that was stored, with its scrollback; without that if it does not belong to it. Otherwise as above.
  static Result<std::unique_ptr<Terminal>> restored(StoredTerminal stored, TerminalSettings settings,
                                                    Milliseconds now = Milliseconds{0});
  /// Makes room for another program, once the one that used the terminal is gone: the main screen is shown, the cursor
  /// stands at the start of the row below its text, and all but text, title and theme is as in a new terminal.
  void startOver();

 private:
  class Dispatcher;

  template <class Archive, class Self>
  static void savedFields(Archive& archive, Self& terminal);

  std::size_t feedBulk(std::string_view bytes);

  TerminalState m_state;
  std::unique_ptr<Dispatcher> m_dispatcher;
  Parser m_parser;
  MouseReporter m_mouse;
  SnapshotMaker m_snapshots;
};

}  // namespace zolt::vt
