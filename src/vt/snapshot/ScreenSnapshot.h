#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/TerminalSize.h"
#include "vt/cells/Position.h"
#include "vt/history/ScrollbackView.h"
#include "vt/snapshot/SnapshotRow.h"
#include "vt/state/InputModes.h"
#include "vt/state/Palette.h"
#include "vt/state/TerminalState.h"

namespace zolt::vt {

/// The cursor as it is shown.
struct SnapshotCursor {
  Position position;
  int columns = 1;  ///< 2 on a wide character
  bool isVisible = true;
  CursorStyle style;

  friend bool operator==(const SnapshotCursor&, const SnapshotCursor&) = default;
};

/// What a terminal shows at one moment, and what the user's input depends on then. Immutable; any thread.
///
/// Rows that did not change are shared with the snapshot before. Nothing in it refers to the terminal.
struct ScreenSnapshot {
  explicit ScreenSnapshot(ScrollbackView scrollback) : history(std::move(scrollback)) {}

  TerminalSize size;
  bool isAlternate = false;
  using Rows = std::vector<std::shared_ptr<const SnapshotRow>>;
  Rows rows;  ///< as many as the size has, none null
  /// The rows of the primary screen while the alternate one is shown, which saving includes; else null.
  std::shared_ptr<const Rows> primaryRows;
  ScrollbackView history;
  bool continuesHistory = false;  ///< the primary screen's first row continues the history's last line
  bool graphemeClusters = false;  ///< a cell holds a cluster (mode 2027)
  SnapshotCursor cursor;
  bool reverseScreen = false;  ///< DECSCNM
  InputModes input;
  std::shared_ptr<const Palette> palette;  ///< the same object as long as it has the same colours
  std::string title;
  std::string workingDirectory;
  std::string workingDirectoryHost;
  Progress progress;
};

/// Makes the snapshots of one terminal. On the terminal's thread.
class SnapshotMaker {
 public:
  /// The screen as it is now; rows that have not changed since the last call are shared with its result.
  std::shared_ptr<const ScreenSnapshot> make(TerminalState& state);

 private:
  bool updateRows(Screen& screen, bool alternate);
  ScreenSnapshot::Rows rowsOf(const Screen& screen, bool alternate) const;

  // Of one grid.
  struct Kept {
    ScreenSnapshot::Rows bySlot;
    std::vector<std::size_t> slots;  // of its rows, from the top
  };
  std::uint64_t m_lastStamp = 0;
  std::array<Kept, 2> m_kept;                                 // primary, alternate
  std::shared_ptr<const ScreenSnapshot::Rows> m_primaryRows;  // of the last snapshot
  std::shared_ptr<const Palette> m_palette;
};

}  // namespace zolt::vt
