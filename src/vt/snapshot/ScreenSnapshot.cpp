#include "vt/snapshot/ScreenSnapshot.h"

#include <algorithm>

namespace zolt::vt {

namespace {

// The cells under the cursor: both of a wide character, whichever it is on.
SnapshotCursor cursorOf(const TerminalState& state) {
  const Screen& screen = state.screen;
  SnapshotCursor cursor;
  cursor.position = screen.cursor().position();
  const std::span<const Cell> row = screen.grid().row(cursor.position.row);
  const auto at = static_cast<std::size_t>(cursor.position.column);
  if (row[at].width() == Cell::Width::Tail && at > 0) --cursor.position.column;
  const Cell under = row[static_cast<std::size_t>(cursor.position.column)];
  cursor.columns = under.width() == Cell::Width::Wide ? 2 : 1;
  cursor.isVisible = state.modes.cursorVisible;
  cursor.style = state.shownCursor();
  return cursor;
}

}  // namespace

std::shared_ptr<const ScreenSnapshot> SnapshotMaker::make(TerminalState& state) {
  Screen& screen = state.screen;
  auto snapshot = std::make_shared<ScreenSnapshot>(screen.scrollback().view());
  snapshot->continuesHistory = screen.scrollback().endsMidLine();
  snapshot->graphemeClusters = screen.modes.graphemeClusters;
  snapshot->size = state.size;
  snapshot->isAlternate = screen.showsAlternate();
  auto& known = m_rows[snapshot->isAlternate ? 1 : 0];
  known.resize(static_cast<std::size_t>(screen.rows()));
  snapshot->rows.reserve(known.size());
  for (int row = 0; row < screen.rows(); ++row) {
    const Grid::Change change = screen.takeChange(row);
    std::shared_ptr<const SnapshotRow>& kept = known[change.slot];
    if (change.isChanged || !kept) {
      kept = std::make_shared<const SnapshotRow>(snapshotRow(screen.grid(), row, screen.tables(), ++m_lastStamp));
    }
    snapshot->rows.push_back(kept);
  }
  snapshot->cursor = cursorOf(state);
  snapshot->reverseScreen = state.modes.reverseScreen;
  snapshot->input = inputModes(state);
  if (!m_palette || !(*m_palette == state.palette)) m_palette = std::make_shared<const Palette>(state.palette);
  snapshot->palette = m_palette;
  snapshot->title = state.title;
  snapshot->workingDirectory = state.workingDirectory;
  snapshot->workingDirectoryHost = state.workingDirectoryHost;
  snapshot->progress = state.progress;
  return snapshot;
}

}  // namespace zolt::vt
