#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <vector>

#include "history/HistoryBlock.h"
#include "vt/Cell.h"

namespace zolt::vt {

/// A mark of the shell's integration (OSC 133) in a row: it stands before the character in `column`.
struct RowMark {
  int column = 0;
  HistoryMarkKind kind = HistoryMarkKind::PromptStart;
  std::int32_t exitStatus = 0;

  friend bool operator==(const RowMark&, const RowMark&) = default;
};

/// What is known of a row beside its cells.
struct RowState {
  /// Cells from here on are blank, with no look: erasing and keeping a row costs only what is before.
  std::uint16_t extent = 0;
  bool wraps = false;     ///< its line goes on in the next row
  bool hasMarks = false;  ///< of the shell's integration
};

/// Rows of cells. Moving whole rows up or down costs a constant time for each row that comes or goes, wherever they
/// are: rows are named by number, and those of the region scrolled last lie in a ring. Rows and columns count from 0.
class Grid {
 public:
  /// At least 1 by 1, at most 65,535 each.
  Grid(int rows, int columns);

  int rows() const { return m_rows; }
  int columns() const { return m_columns; }

  std::span<Cell> row(int row) { return {cells(slot(row)), static_cast<std::size_t>(m_columns)}; }
  std::span<const Cell> row(int row) const {
    return {m_cells.data() + offset(slot(row)), static_cast<std::size_t>(m_columns)};
  }
  /// Both at once.
  struct Row {
    Cell* cells;
    RowState& state;
  };
  Row writable(int row) {
    const std::size_t at = slot(row);
    return {cells(at), m_states[at]};
  }
  RowState& state(int row) { return m_states[slot(row)]; }
  const RowState& state(int row) const { return m_states[slot(row)]; }
  /// Says that columns before `column` may hold something.
  void touch(int row, int column) {
    RowState& state = m_states[slot(row)];
    if (column > state.extent) state.extent = static_cast<std::uint16_t>(column);
  }

  /// Fills columns from `begin` to `end` (not included) with `blank`.
  void fill(int row, int begin, int end, Cell blank);
  /// Makes the row as it was never written, filled with `blank`.
  void clearRow(int row, Cell blank);

  /// Moves the rows from `top` to `bottom` (not included) up by `count`, at most their number. Those that come in below
  /// are filled with `blank`.
  void scrollUp(int top, int bottom, int count, Cell blank);
  void scrollDown(int top, int bottom, int count, Cell blank);

  void addMark(int row, const RowMark& mark);
  /// The marks of a row, in the order of their coming.
  std::span<const RowMark> marks(int row) const;

 private:
  static constexpr std::size_t kMaxMarksInARow = 16;

  std::size_t slot(int row) const {
    const int inRing = row - m_ringTop;
    if (inRing < 0 || inRing >= m_ringSize) return m_order[static_cast<std::size_t>(row)];
    const int turned = inRing + m_ringOffset;
    return m_order[static_cast<std::size_t>(m_ringTop + (turned < m_ringSize ? turned : turned - m_ringSize))];
  }
  std::size_t offset(std::size_t slot) const { return slot * static_cast<std::size_t>(m_columns); }
  Cell* cells(std::size_t slot) { return m_cells.data() + offset(slot); }
  void makeRing(int top, int bottom);
  void clearSlot(std::size_t slot, Cell blank);

  int m_rows;
  int m_columns;
  std::vector<Cell> m_cells;
  std::vector<RowState> m_states;      // by slot
  std::vector<std::uint16_t> m_order;  // slots by row, but for the ring
  int m_ringTop = 0;
  int m_ringSize = 0;
  int m_ringOffset = 0;
  std::map<std::size_t, std::vector<RowMark>> m_marks;  // by slot
};

}  // namespace zolt::vt
