#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <utility>
#include <vector>

#include "base/TerminalSize.h"
#include "vt/cells/Cell.h"
#include "vt/cells/Ranges.h"
#include "vt/cells/RowMark.h"

namespace zolt::vt {

/// What a row has besides its cells.
struct RowInfo {
  /// Cells from this column on are blank, so that clearing and saving a row take time only for what was written.
  std::uint16_t extent = 0;
  bool wraps = false;     ///< the next row continues its line
  bool hasMarks = false;  ///< see Grid::marks
  bool isChanged = true;  ///< see Grid::takeChange
};

/// Rows of cells. Scrolling takes constant time for each row that enters or leaves, wherever the scrolling region is:
/// rows are mapped to slots, and those of the region that was last scrolled form a ring. Rows and columns count from 0.
class Grid {
 public:
  /// In a row; further ones are dropped.
  static constexpr std::size_t maxMarks = 16;

  /// At least 1 by 1, at most 65,535 by 65,535.
  explicit Grid(const TerminalSize& size);

  int rows() const { return m_rows; }
  int columns() const { return m_columns; }

  std::span<Cell> row(int row) {
    const std::size_t at = slot(row);
    m_states[at].isChanged = true;
    return {cells(at), static_cast<std::size_t>(m_columns)};
  }
  std::span<const Cell> row(int row) const {
    return {m_cells.data() + offset(slot(row)), static_cast<std::size_t>(m_columns)};
  }
  /// Cells and state, with one look-up.
  struct Row {
    Cell* cells;
    RowInfo& state;
  };
  Row writable(int row) {
    const std::size_t at = slot(row);
    m_states[at].isChanged = true;
    return {cells(at), m_states[at]};
  }
  RowInfo& state(int row) {
    RowInfo& state = m_states[slot(row)];
    state.isChanged = true;
    return state;
  }
  const RowInfo& state(int row) const { return m_states[slot(row)]; }
  /// Must be called when cells before `end` have been written in its row.
  void touch(Position end) {
    RowInfo& state = m_states[slot(end.row)];
    if (end.column > state.extent) state.extent = static_cast<std::uint16_t>(end.column);
  }

  /// Whether a row may have changed since this was last asked: any access that could have written to it counts. A row
  /// that only scrolls has not changed, and keeps its slot.
  struct Change {
    std::size_t slot = 0;  ///< from 0 to rows() (not included)
    bool isChanged = true;
  };
  Change takeChange(int row) {
    const std::size_t at = slot(row);
    return {.slot = at, .isChanged = std::exchange(m_states[at].isChanged, false)};
  }

  void fill(int row, ColumnRange columns, Cell blank);
  /// Fills the row and resets its state and marks.
  void clearRow(int row, Cell blank);

  /// Scrolls `rows` by `count`, at most their number. Rows that scroll in are filled with `blank`.
  void scrollUp(RowRange rows, int count, Cell blank);
  void scrollDown(RowRange rows, int count, Cell blank);

  void addMark(int row, const RowMark& mark);
  /// In the order in which they were added.
  std::span<const RowMark> marks(int row) const;

 private:
  friend struct SavedFields;

  std::size_t slot(int row) const {
    const int inRing = row - m_ringTop;
    if (inRing < 0 || inRing >= m_ringSize) return m_order[static_cast<std::size_t>(row)];
    const int rotated = inRing + m_ringOffset;
    return m_order[static_cast<std::size_t>(m_ringTop + (rotated < m_ringSize ? rotated : rotated - m_ringSize))];
  }
  std::size_t offset(std::size_t slot) const { return slot * static_cast<std::size_t>(m_columns); }
  Cell* cells(std::size_t slot) { return m_cells.data() + offset(slot); }
  void makeRing(RowRange rows);
  void clearSlot(std::size_t slot, Cell blank);

  int m_rows;
  int m_columns;
  std::vector<Cell> m_cells;
  std::vector<RowInfo> m_states;       // by slot
  std::vector<std::uint16_t> m_order;  // slots by row; rotated by m_ringOffset within the ring
  int m_ringTop = 0;
  int m_ringSize = 0;
  int m_ringOffset = 0;
  std::map<std::size_t, std::vector<RowMark>> m_marks;  // by slot
};

}  // namespace zolt::vt
