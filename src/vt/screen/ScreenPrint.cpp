#include <algorithm>

#include "text/CharacterWidth.h"
#include "text/GraphemeClusters.h"
#include "vt/cells/CellRuns.h"
#include "vt/screen/Screen.h"

namespace zolt::vt {

namespace {

using Width = Cell::Width;

}  // namespace

// Moves to the start of the next row, which continues the line.
void Screen::wrap() {
  if (m_margins.columns.begin == 0 && limit() == columns()) m_grid->state(m_cursor.row).wraps = true;
  const int column = m_cursor.column >= m_margins.columns.begin ? m_margins.columns.begin : 0;
  advanceRow();
  m_cursor.column = column;
}

// Erases wide characters that straddle an edge of `columns`, before those are written.
void Screen::isolate(int row, ColumnRange columns) {
  const std::span<Cell> cells = m_grid->row(row);
  const auto eraseAcross = [&](int column) {
    if (column <= 0 || column >= this->columns()) return;
    Cell& tail = cells[static_cast<std::size_t>(column)];
    if (tail.width() != Width::Tail) return;
    Cell& head = cells[static_cast<std::size_t>(column) - 1];
    head = Cell(Cell::makeAttributes(head.style(), 0, false));
    tail = Cell(Cell::makeAttributes(tail.style(), 0, false));
  };
  eraseAcross(columns.begin);
  eraseAcross(columns.end);
}

void Screen::printAscii(std::string_view text) {
  const bool joinsBefore = modes.graphemeClusters && m_openCluster && !m_lastIsPlain;
  if (!characterSets.areAscii() || modes.insert || joinsBefore) {
    for (const char character : text) {
      const std::uint8_t set = characterSets.once.value_or(characterSets.inUse);
      characterSets.once.reset();
      printOne(translated(characterSets.sets[set], character));
    }
    return;
  }
  const std::uint64_t attributes = this->attributes();
  m_lastPrinted = static_cast<unsigned char>(text.back());
  m_openCluster = true;
  m_lastIsPlain = true;
  while (!text.empty()) {
    if (m_cursor.wrapsNext) {
      if (modes.autoWrap) {
        wrap();
      } else if (m_cursor.column == limit() - 1) {
        // Every further character overwrites the last column, so only the last one stays.
        text = text.substr(text.size() - 1);
      }
    }
    const int row = m_cursor.row;
    const int begin = m_cursor.column;
    const int limit = this->limit();
    const int count = static_cast<int>(std::min<std::size_t>(text.size(), static_cast<std::size_t>(limit - begin)));
    const int end = begin + count;
    const auto [cells, state] = m_grid->writable(row);
    if (state.extent > begin) isolate(row, {.begin = begin, .end = end});
    spreadAscii(text.substr(0, static_cast<std::size_t>(count)), attributes, cells + begin);
    state.extent = std::max(state.extent, static_cast<std::uint16_t>(end));
    if (end == columns()) state.wraps = false;
    text.remove_prefix(static_cast<std::size_t>(count));
    m_cursor.wrapsNext = end == limit;
    m_cursor.column = m_cursor.wrapsNext ? end - 1 : end;
  }
}

void Screen::print(std::u32string_view text) {
  // A single shift is used up by the next character, even one outside its set.
  characterSets.once.reset();
  while (!text.empty()) {
    text.remove_prefix(printRun(text));
    if (text.empty()) return;
    printOne(text.front());
    text.remove_prefix(1);
  }
}

// The fast path: prints characters that join nothing and fit in the row. Returns how many.
std::size_t Screen::printRun(std::u32string_view text) {
  if (m_cursor.wrapsNext || modes.insert) return 0;
  const std::uint64_t attributes = this->attributes();
  const int limit = this->limit();
  const int begin = m_cursor.column;
  int column = begin;
  const auto [cells, state] = m_grid->writable(m_cursor.row);
  const bool isWritten = state.extent > begin;
  if (isWritten) isolate(m_cursor.row, {.begin = begin, .end = begin});
  std::size_t count = 0;
  for (; count < text.size(); ++count) {
    const CharacterProperties properties = characterProperties(text[count]);
    const bool mayJoin = modes.graphemeClusters && !(properties.isPlain && m_lastIsPlain);
    if (properties.width == 0 || mayJoin || column + properties.width > limit) break;
    if (isWritten && column + properties.width < columns())
      isolate(m_cursor.row, {.begin = begin, .end = column + properties.width});
    const bool isWide = properties.width == 2;
    cells[column] = Cell(text[count], isWide ? Width::Wide : Width::Narrow, attributes);
    if (isWide) cells[column + 1] = Cell(0, Width::Tail, attributes);
    column += properties.width;
    m_lastIsPlain = properties.isPlain;
  }
  if (count == 0) return 0;
  m_lastPrinted = text[count - 1];
  m_openCluster = true;
  state.extent = std::max(state.extent, static_cast<std::uint16_t>(column));
  if (column == columns()) state.wraps = false;
  m_cursor.wrapsNext = column == limit;
  m_cursor.column = m_cursor.wrapsNext ? column - 1 : column;
  return count;
}

void Screen::repeat(int count) {
  if (m_lastPrinted == 0) return;
  count = std::min(count, rows() * columns());
  const char32_t character = m_lastPrinted;
  // Only the character is repeated, without the marks that were combined with it.
  for (; count > 0; --count) {
    m_openCluster = false;
    put(character, characterProperties(character).width == 2 ? Width::Wide : Width::Narrow);
  }
}

void Screen::printOne(char32_t character) {
  const CharacterProperties properties = characterProperties(character);
  if (modes.graphemeClusters) {
    if (m_openCluster && !(properties.isPlain && m_lastIsPlain) && joins(character, properties.isPlain)) {
      join(character);
      m_lastIsPlain = false;
      return;
    }
  }
  if (properties.width == 0) {
    join(character);
    return;
  }
  put(character, properties.width == 2 ? Width::Wide : Width::Narrow);
  m_lastPrinted = character;
  m_openCluster = true;
  m_lastIsPlain = properties.isPlain;
}

// Leaves the column before a margin blank, where a wide character does not fit. In the last column that is a filler,
// which is not part of the text.
void Screen::leaveFiller(Position at) {
  const Width width = at.column + 1 == columns() ? Width::Filler : Width::Narrow;
  m_grid->row(at.row)[static_cast<std::size_t>(at.column)] = Cell(0, width, blank().attributes());
  m_grid->touch({.row = at.row, .column = at.column + 1});
}

// Prints a narrow or wide character at the cursor.
void Screen::put(char32_t character, Width width) {
  const std::uint64_t attributes = this->attributes();
  if (m_cursor.wrapsNext && modes.autoWrap) wrap();
  m_cursor.wrapsNext = false;
  int limit = this->limit();
  const int first =
      m_cursor.column >= m_margins.columns.begin && limit == m_margins.columns.end ? m_margins.columns.begin : 0;
  if (limit - first < 2) width = Width::Narrow;
  const bool isWide = width == Width::Wide;
  if (isWide && m_cursor.column == limit - 1) {
    if (modes.autoWrap) {
      isolate(m_cursor.row, {.begin = m_cursor.column, .end = limit});
      leaveFiller(m_cursor.position());
      wrap();
      limit = this->limit();
    } else {
      --m_cursor.column;
    }
  }
  const int row = m_cursor.row;
  const int begin = m_cursor.column;
  const int count = isWide ? 2 : 1;
  const int end = begin + count;
  if (modes.insert) shiftCells(row, {.begin = begin, .end = std::max(limit, end)}, count);
  isolate(row, {.begin = begin, .end = end});
  const std::span<Cell> cells = m_grid->row(row);
  cells[static_cast<std::size_t>(begin)] = Cell(character, width, attributes);
  if (isWide) cells[static_cast<std::size_t>(begin) + 1] = Cell(0, Width::Tail, attributes);
  m_grid->touch({.row = row, .column = end});
  if (end == columns()) m_grid->state(row).wraps = false;
  m_cursor.wrapsNext = end == limit;
  m_cursor.column = m_cursor.wrapsNext ? end - 1 : end;
}

// The cell before the cursor, which a combining character joins.
std::optional<Cursor> Screen::cellBefore() const {
  Cursor at = m_cursor;
  if (!at.wrapsNext && --at.column < 0) return std::nullopt;
  const std::span<const Cell> cells = m_grid->row(at.row);
  if (cells[static_cast<std::size_t>(at.column)].width() == Width::Tail) --at.column;
  if (cells[static_cast<std::size_t>(at.column)].isErased()) return std::nullopt;
  return at;
}

bool Screen::joins(char32_t character, bool isPlain) const {
  const std::optional<Cursor> at = cellBefore();
  if (!at || (isPlain && m_lastIsPlain)) return false;
  const Cell cell = m_grid->row(at->row)[static_cast<std::size_t>(at->column)];
  if (cell.isCluster()) return continuesCluster(m_tables.clusters[cell.clusterId()], character);
  const char32_t alone = cell.character();
  return continuesCluster({&alone, 1}, character);
}

// Adds a character to the cell before the cursor. It is dropped if there is none, or no room in the cluster.
void Screen::join(char32_t character) {
  const std::optional<Cursor> at = cellBefore();
  if (!at) return;
  Cell& cell = m_grid->row(at->row)[static_cast<std::size_t>(at->column)];
  if (cell.width() == Width::Filler) return;
  std::u32string scalars = cell.isCluster() ? m_tables.clusters[cell.clusterId()] : std::u32string(1, cell.character());
  if (scalars.size() >= CellTables::maxScalars) return;
  scalars.push_back(character);
  const std::optional<ClusterId> id = clusterId(scalars);
  if (!id) return;
  const Width width = cell.width();
  cell = Cell::cluster(*id, width, cell.attributes());
  if (modes.graphemeClusters && width == Width::Narrow && widensCluster(scalars.front(), character)) widen(*at, cell);
}

// Makes the cell at `at`, the last one printed, wide.
void Screen::widen(const Cursor& at, Cell cell) {
  const int limit = at.column < m_margins.columns.end ? m_margins.columns.end : columns();
  const Cell wide = Cell::cluster(cell.clusterId(), Width::Wide, cell.attributes());
  const Cell tail(0, Width::Tail, cell.attributes());
  const auto write = [&](Position to) {
    const auto [row, column] = to;
    isolate(row, {.begin = column, .end = column + 2});
    const std::span<Cell> cells = m_grid->row(row);
    cells[static_cast<std::size_t>(column)] = wide;
    cells[static_cast<std::size_t>(column) + 1] = tail;
    m_grid->touch({.row = row, .column = column + 2});
    if (column + 2 == columns()) m_grid->state(row).wraps = false;
    const bool wrapsNext = column + 2 == limit;
    m_cursor = {.row = row, .column = wrapsNext ? column + 1 : column + 2, .wrapsNext = wrapsNext};
  };
  if (at.column + 2 <= limit) {
    if (modes.insert) shiftCells(at.row, {.begin = at.column + 1, .end = limit}, 1);
    write(at.position());
    return;
  }
  // In the last column it does not fit: move it to the next row.
  const int first = at.column >= m_margins.columns.begin ? m_margins.columns.begin : 0;
  if (!modes.autoWrap || limit - first < 2) return;
  leaveFiller(at.position());
  m_cursor = at;
  wrap();
  write(m_cursor.position());
}

}  // namespace zolt::vt
