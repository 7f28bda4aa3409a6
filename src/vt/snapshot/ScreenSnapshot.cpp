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

// Makes the rows that have changed. Whether any has, or stands elsewhere.
bool SnapshotMaker::updateRows(Screen& screen, bool alternate) {
  Kept& kept = m_kept[alternate ? 1 : 0];
  const auto count = static_cast<std::size_t>(screen.rows());
  bool isChanged = kept.slots.size() != count;
  kept.bySlot.resize(count);
  kept.slots.resize(count);
  for (std::size_t row = 0; row < count; ++row) {
    const Grid::Change change = screen.takeChange(alternate, static_cast<int>(row));
    std::shared_ptr<const SnapshotRow>& known = kept.bySlot[change.slot];
    isChanged = isChanged || change.isChanged || !known || kept.slots[row] != change.slot;
    kept.slots[row] = change.slot;
    if (change.isChanged || !known) {
      known = std::make_shared<const SnapshotRow>(
          snapshotRow(screen.grid(alternate), static_cast<int>(row), screen.tables(), ++m_lastStamp));
    }
  }
  return isChanged;
}

ScreenSnapshot::Rows SnapshotMaker::rowsOf(const Screen& screen, bool alternate) const {
  const Kept& kept = m_kept[alternate ? 1 : 0];
  ScreenSnapshot::Rows rows;
  rows.reserve(static_cast<std::size_t>(screen.rows()));
  for (const std::size_t slot : kept.slots) {
    rows.push_back(kept.bySlot[slot]);
  }
  return rows;
}

std::shared_ptr<const ScreenSnapshot> SnapshotMaker::make(TerminalState& state) {
  Screen& screen = state.screen;
  auto snapshot = std::make_shared<ScreenSnapshot>(screen.scrollback().view());
  snapshot->continuesHistory = screen.scrollback().endsMidLine();
  snapshot->graphemeClusters = screen.modes.graphemeClusters;
  snapshot->size = state.size;
  snapshot->isAlternate = screen.showsAlternate();
  updateRows(screen, snapshot->isAlternate);
  snapshot->rows = rowsOf(screen, snapshot->isAlternate);
  if (!snapshot->isAlternate) {
    m_primaryRows = nullptr;
  } else if (updateRows(screen, false) || !m_primaryRows) {
    m_primaryRows = std::make_shared<const ScreenSnapshot::Rows>(rowsOf(screen, false));
  }
  snapshot->primaryRows = m_primaryRows;
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
