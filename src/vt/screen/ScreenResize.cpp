#include <algorithm>
#include <deque>
#include <utility>

#include "text/CharacterWidth.h"
#include "text/GraphemeClusters.h"
#include "vt/screen/Screen.h"

namespace zolt::vt {

namespace {

using Width = Cell::Width;

// The longest line that is taken back from the scrollback to be rewrapped.
constexpr std::size_t kMaxRewrappedBytes = std::size_t{64} << 10;

int widthOf(Cell cell) {
  return cell.width() == Width::Wide ? 2 : 1;
}

// One row of a wrapped line: its cells [begin, end).
struct WrappedRow {
  std::size_t line = 0;
  std::size_t begin = 0;
  std::size_t end = 0;
  bool wraps = false;
};

}  // namespace

// A cursor, by the character that it stays on: the cell in its line, and columns past the last cell of the row.
struct Screen::Tracked {
  Cursor* cursor = nullptr;
  std::size_t line = 0;
  std::size_t cell = 0;
  int beyond = 0;
};

// Logical lines, and the rows that they are wrapped into.
struct Screen::Lines {
  std::deque<Line> lines;
  std::deque<WrappedRow> rows;

  void wrap(std::size_t index, int columns, std::vector<WrappedRow>& into) const {
    const std::vector<Cell>& cells = lines[index].cells;
    WrappedRow row{.line = index};
    int width = 0;
    for (std::size_t i = 0; i < cells.size(); ++i) {
      const int cellWidth = std::min(widthOf(cells[i]), columns);
      if (width + cellWidth > columns) {
        row.end = i;
        row.wraps = true;
        into.push_back(row);
        row = {.line = index, .begin = i};
        width = 0;
      }
      width += cellWidth;
    }
    row.end = cells.size();
    into.push_back(row);
  }

  // The index of the row that a cursor is on, and the cursor's column there.
  std::pair<std::size_t, Cursor> find(const Tracked& place, int columns) const {
    std::size_t at = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
      if (rows[i].line == place.line && rows[i].begin <= place.cell) at = i;
    }
    int column = 0;
    for (std::size_t i = rows[at].begin; i < std::min(place.cell, rows[at].end); ++i) {
      column += widthOf(lines[place.line].cells[i]);
    }
    const bool wrapsNext = column >= columns && place.beyond == 0;
    column = std::min(column, columns) + std::min(place.beyond, columns);
    return {at, Cursor{.column = std::min(column, columns - 1), .wrapsNext = wrapsNext}};
  }

  void write(const WrappedRow& from, Grid& grid, int row) const {
    const Line& line = lines[from.line];
    const std::span<Cell> cells = grid.row(row);
    std::size_t column = 0;
    for (std::size_t i = from.begin; i < from.end; ++i) {
      const Cell cell = line.cells[i];
      const bool isWide = widthOf(cell) == 2;
      // On a screen of one column, wide characters become narrow.
      cells[column++] = isWide && cells.size() < 2 ? cell.withWidth(Width::Narrow) : cell;
      if (isWide && cells.size() >= 2) cells[column++] = Cell(0, Width::Tail, cell.attributes());
    }
    if (from.wraps && column < cells.size()) cells[column++] = Cell(0, Width::Filler, 0);
    grid.touch({.row = row, .column = static_cast<int>(column)});
    grid.state(row).wraps = from.wraps;
    auto mark = std::ranges::lower_bound(line.marks, static_cast<int>(from.begin), {}, &RowMark::column);
    for (; mark != line.marks.end() && (static_cast<std::size_t>(mark->column) < from.end || !from.wraps); ++mark) {
      RowMark moved = *mark;
      moved.column = std::min(mark->column - static_cast<int>(from.begin), static_cast<int>(cells.size()));
      grid.addMark(row, moved);
    }
  }
};

// Appends a character to a line, joining clusters as printing would.
void Screen::addScalar(char32_t scalar, std::uint64_t attributes, std::vector<Cell>& cells) {
  const CharacterProperties properties = characterProperties(scalar);
  std::u32string cluster;
  if (!cells.empty() && (properties.width == 0 || modes.graphemeClusters)) {
    const Cell last = cells.back();
    cluster = last.isCluster() ? m_tables.clusters[last.clusterId()] : std::u32string(1, last.character());
  }
  const bool joins = !cluster.empty() && (properties.width == 0 || continuesCluster(cluster, scalar));
  if (!joins) {
    cells.emplace_back(scalar, properties.width == 2 ? Width::Wide : Width::Narrow, attributes);
    return;
  }
  const bool isWide =
      cells.back().width() == Width::Wide || (modes.graphemeClusters && widensCluster(cluster[0], scalar));
  cluster.push_back(scalar);
  const std::optional<ClusterId> id = cluster.size() <= CellTables::maxScalars ? clusterId(cluster) : std::nullopt;
  if (id) cells.back() = Cell::cluster(*id, isWide ? Width::Wide : Width::Narrow, cells.back().attributes());
}

// Fills an empty line from the scrollback. The line is registered first, so that a sweep keeps its styles and links.
void Screen::takeLine(const HistoryLine& history, Line& line) {
  m_detachedLines.push_back(&line);
  auto mark = history.marks.begin();
  std::size_t at = 0;
  const auto takeMarks = [&] {
    for (; mark != history.marks.end() && mark->offset <= at; ++mark) {
      line.marks.push_back(
          {.column = static_cast<int>(line.cells.size()), .kind = mark->kind, .exitStatus = mark->exitStatus});
    }
  };
  for (const HistoryLine::Run& run : history.runs) {
    const StyleId style = styleId(run.style);
    const LinkId link = linkId(run.link);
    std::size_t length = 0;
    for (const std::size_t end = at + run.length; at < end; at += length) {
      takeMarks();
      addScalar(scalarAt(history.text, at, length), Cell::makeAttributes(style, link, false), line.cells);
    }
  }
  takeMarks();
}

// The width that a cell had before a screen of one column narrowed it.
Cell::Width Screen::naturalWidth(Cell cell) const {
  const char32_t alone = cell.character();
  const std::u32string_view scalars =
      cell.isCluster() ? std::u32string_view(m_tables.clusters[cell.clusterId()]) : std::u32string_view(&alone, 1);
  const bool isWide = characterProperties(scalars[0]).width == 2;
  const bool isWidened = modes.graphemeClusters && std::ranges::any_of(scalars.substr(1), [&](char32_t added) {
                           return widensCluster(scalars[0], added);
                         });
  return isWide || isWidened ? Width::Wide : Width::Narrow;
}

Screen::RowsBelow Screen::rowsBelow() const {
  RowsBelow rows;
  rows.continuesLastRow = !m_rowsBelow.empty() && m_rowsBelow.front().continuesPrevious;
  for (const Line& line : m_rowsBelow) {
    if (&line != m_rowsBelow.data()) rows.text += '\n';
    for (const Cell cell : line.cells) {
      m_tables.appendText(cell, rows.text);
    }
  }
  return rows;
}

// Appends a row of the primary grid to its line, which has this index.
void Screen::takeRow(int row, Line& line, std::size_t index, std::span<Tracked> tracked) const {
  const Grid& grid = m_grids[0];
  const RowInfo& state = grid.state(row);
  std::span<const Cell> cells = grid.row(row).first(state.extent);
  while (!state.wraps && !cells.empty() && cells.back().isBlank()) {
    cells = cells.first(cells.size() - 1);
  }
  std::vector<std::size_t> before;  // the number of cells before each column
  for (const Cell cell : cells) {
    const bool isTail = cell.width() == Width::Tail && !line.cells.empty();
    before.push_back(line.cells.size() - (isTail ? 1 : 0));
    if (cell.width() == Width::Tail || cell.width() == Width::Filler) continue;
    line.cells.push_back(grid.columns() == 1 ? cell.withWidth(naturalWidth(cell)) : cell);
  }
  const auto cellsBefore = [&](int column) {
    const auto at = static_cast<std::size_t>(column);
    return at < before.size() ? before[at] : line.cells.size();
  };
  for (Tracked& place : tracked) {
    if (place.cursor->row != row) continue;
    const int column = place.cursor->column + (place.cursor->wrapsNext ? 1 : 0);
    place.line = index;
    place.cell = cellsBefore(column);
    place.beyond = std::max(0, column - static_cast<int>(cells.size()));
  }
  for (RowMark mark : grid.marks(row)) {
    mark.column = static_cast<int>(cellsBefore(mark.column));
    line.marks.push_back(mark);
  }
}

// Prepends lines of the scrollback until there are `rows` more rows.
void Screen::takeFromHistory(std::size_t rows, int columns, Lines& lines) {
  while (rows > 0) {
    const std::optional<HistoryLine> history = m_scrollback.takeLastLine(kMaxRewrappedBytes);
    if (!history) return;
    takeLine(*history, lines.lines.emplace_back());
    std::vector<WrappedRow> above;
    lines.wrap(lines.lines.size() - 1, columns, above);
    lines.rows.insert(lines.rows.begin(), above.begin(), above.end());
    rows -= std::min(rows, above.size());
  }
}

// Rewraps the lines of the primary grid.
void Screen::reflow(const TerminalSize& size) {
  const int rows = size.rows;
  const int columns = size.columns;
  Grid& before = m_grids[0];
  std::array<Tracked, 2> both{{{.cursor = &m_saved[0].cursor}, {.cursor = &m_cursor}}};
  // While the alternate grid is shown, only the primary grid's saved cursor is on this grid.
  const std::span<Tracked> tracked = std::span(both).first(showsAlternate() ? 1 : 2);
  for (const Tracked& place : tracked) {
    place.cursor->row = std::clamp(place.cursor->row, 0, before.rows() - 1);
  }
  const int anchorRow = tracked.back().cursor->row;

  int used = anchorRow + 1;
  for (int row = used; row < before.rows(); ++row) {
    if (before.state(row).extent > 0 || before.state(row).hasMarks) used = row + 1;
  }
  // Rejoin a line that continues below the screen.
  if (!m_rowsBelow.empty()) used = before.rows();
  if (!m_rowsBelow.empty() && m_rowsBelow.front().continuesPrevious) before.state(used - 1).wraps = true;
  const bool wasFull = used == before.rows();

  Lines lines;
  bool continuesLine = false;
  if (m_scrollback.endsMidLine()) {
    if (const auto begun = m_scrollback.takeLastLine(kMaxRewrappedBytes)) {
      takeLine(*begun, lines.lines.emplace_back());
      continuesLine = true;
    }
  }
  for (int row = 0; row < used; ++row) {
    if (!std::exchange(continuesLine, before.state(row).wraps)) lines.lines.emplace_back();
    takeRow(row, lines.lines.back(), lines.lines.size() - 1, tracked);
  }
  for (Line& line : std::exchange(m_rowsBelow, {})) {
    if (line.continuesPrevious) {
      std::ranges::copy(line.cells, std::back_inserter(lines.lines.back().cells));
    } else {
      lines.lines.push_back(std::move(line));
    }
  }
  std::vector<WrappedRow> wrapped;
  for (std::size_t i = 0; i < lines.lines.size(); ++i) {
    std::ranges::stable_sort(lines.lines[i].marks, {}, &RowMark::column);
    lines.wrap(i, columns, wrapped);
  }
  lines.rows.assign(wrapped.begin(), wrapped.end());

  for (const Line& line : lines.lines) {
    m_detachedLines.push_back(&line);
  }
  const auto height = static_cast<std::size_t>(rows);
  // A full screen stays full: rows come back from the scrollback.
  if (wasFull && lines.rows.size() < height) takeFromHistory(height - lines.rows.size(), columns, lines);

  std::array<std::pair<std::size_t, Cursor>, 2> found;
  for (std::size_t i = 0; i < tracked.size(); ++i) {
    found[i] = lines.find(tracked[i], columns);
  }
  // The cursor's row must stay visible, unless the alternate grid is shown.
  const std::size_t overfull = lines.rows.size() > height ? lines.rows.size() - height : 0;
  const std::size_t first = showsAlternate() ? overfull : std::min(overfull, found[tracked.size() - 1].first);
  const std::size_t end = std::min(lines.rows.size(), first + height);

  Grid single({.rows = 1, .columns = columns});
  if (first > 0) m_scrollback.setClusters(modes.graphemeClusters);
  for (std::size_t i = 0; i < first; ++i) {
    lines.write(lines.rows[i], single, 0);
    m_scrollback.append(std::as_const(single).row(0).first(single.state(0).extent), single.state(0).wraps,
                        single.marks(0), m_tables);
    single.clearRow(0, Cell());
  }
  Grid after({.rows = rows, .columns = columns});
  for (std::size_t i = first; i < end; ++i) {
    lines.write(lines.rows[i], after, static_cast<int>(i - first));
  }
  for (std::size_t i = end; i < lines.rows.size(); ++i) {
    const WrappedRow& row = lines.rows[i];
    const std::vector<Cell>& cells = lines.lines[row.line].cells;
    if (row.begin != 0 && i != end) continue;
    m_rowsBelow.push_back({.cells = {cells.begin() + static_cast<std::ptrdiff_t>(row.begin), cells.end()},
                           .continuesPrevious = row.begin != 0});
  }
  if (!m_rowsBelow.empty() && m_rowsBelow.front().continuesPrevious) after.state(rows - 1).wraps = false;
  m_attributesKnown = m_attributesKnown && m_rowsBelow.empty();
  m_detachedLines.clear();

  for (std::size_t i = 0; i < tracked.size(); ++i) {
    const auto row = static_cast<std::ptrdiff_t>(found[i].first) - static_cast<std::ptrdiff_t>(first);
    *tracked[i].cursor = found[i].second;
    tracked[i].cursor->row = static_cast<int>(std::clamp<std::ptrdiff_t>(row, 0, rows - 1));
  }
  before = std::move(after);
}

void Screen::resizeAlternate(const TerminalSize& size) {
  const int rows = size.rows;
  const int columns = size.columns;
  const Grid& before = m_grids[1];
  const bool isShown = showsAlternate();
  // Rows are dropped at the top if the cursor's row would not fit otherwise.
  const int skipped = isShown ? std::max(0, m_cursor.row - rows + 1) : 0;
  Grid after({.rows = rows, .columns = columns});
  for (int row = 0; row < std::min(rows, before.rows() - skipped); ++row) {
    const int from = row + skipped;
    const int count = std::min(columns, static_cast<int>(before.state(from).extent));
    std::ranges::copy(before.row(from).first(static_cast<std::size_t>(count)), after.row(row).begin());
    after.touch({.row = row, .column = count});
    if (before.columns() <= columns) {
      Cell& last = after.row(row)[static_cast<std::size_t>(before.columns()) - 1];
      last = last.withoutFiller();
    }
    // Erase half of a wide character at the edge.
    if (count == columns && after.row(row).back().width() == Width::Wide) after.row(row).back() = Cell();
    for (const RowMark& mark : before.marks(from)) {
      after.addMark(row, mark);
    }
  }
  m_grids[1] = std::move(after);
  const auto moved = [&](const Cursor& cursor) {
    return Cursor{.row = std::clamp(cursor.row - skipped, 0, rows - 1), .column = std::min(cursor.column, columns - 1)};
  };
  if (isShown) m_cursor = moved(m_cursor);
  m_saved[1].cursor = moved(m_saved[1].cursor);
}

void Screen::resize(const TerminalSize& wanted) {
  const TerminalSize size = clamped(wanted);
  if (size.rows == rows() && size.columns == columns()) return;
  const auto oldColumns = static_cast<std::size_t>(this->columns());
  reflow(size);
  resizeAlternate(size);
  resetMargins();
  m_tabStops.resize(static_cast<std::size_t>(columns()));
  for (std::size_t column = std::max<std::size_t>((oldColumns + 7) / 8, 1) * 8; column < m_tabStops.size();
       column += 8) {
    m_tabStops[column] = true;
  }
  clampCursor();
  m_openCluster = false;
}

}  // namespace zolt::vt
