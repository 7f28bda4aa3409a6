#include "vt/screen/Screen.h"

#include <algorithm>
#include <utility>

namespace zolt::vt {

namespace {

constexpr int kTabWidth = 8;
// After a sweep that freed little, the next one waits for this many refusals, so that the cost is amortized.
constexpr std::size_t kRefusalsBetweenSweeps = 8192;

std::vector<bool> everyEighth(int columns) {
  std::vector<bool> stops(static_cast<std::size_t>(columns));
  for (std::size_t column = kTabWidth; column < stops.size(); column += kTabWidth) {
    stops[column] = true;
  }
  return stops;
}

}  // namespace

TerminalSize Screen::clamped(const TerminalSize& size) {
  const int columns = std::clamp(size.columns, 1, maxSide);
  return {.rows = std::clamp(size.rows, 1, std::min(maxSide, maxCells / columns)), .columns = columns};
}

Screen::Screen(const TerminalSize& size, HistorySettings history)
    : m_scrollback(std::move(history)), m_grids{Grid(clamped(size)), Grid(clamped(size))} {
  resetTabStops();
  resetMargins();
}

void Screen::setProtected(bool isProtected) {
  m_pen.isProtected = isProtected;
  m_attributesKnown = false;
}

void Screen::setLink(LinkTarget link) {
  m_pen.link = std::move(link);
  m_attributesKnown = false;
}

// The ID of `value`. A full table is swept first; returns `noRoom` if that does not help.
template <class Table, class Value>
std::uint32_t Screen::internOrSweep(Table& table, const Value& value) {
  const std::uint32_t id = table.intern(value, false);
  if (id != Table::noRoom) return id;
  if (!table.isWorthSweeping() && ++m_refused % kRefusalsBetweenSweeps != 0) return Table::noRoom;
  sweep();
  return table.intern(value, false);
}

// In a full table, direct colours are coarsened to find a similar style; failing that, the style is dropped.
StyleId Screen::styleId(const Style& style) {
  if (style == Style()) return 0;
  const std::uint32_t id = internOrSweep(m_tables.styles, style);
  if (id != m_tables.styles.noRoom) return static_cast<StyleId>(id);
  Style coarse = style;
  for (CellColor* color : {&coarse.foreground, &coarse.background, &coarse.underlineColor}) {
    if (color->kind() == CellColor::Kind::Direct) *color = CellColor::fromBits(color->bits() & 0xFFE0E0E0);
  }
  const std::uint32_t coarseId = m_tables.styles.intern(coarse);
  return coarseId == m_tables.styles.noRoom ? StyleId{0} : static_cast<StyleId>(coarseId);
}

// 0 if there is no link, or no room for another.
LinkId Screen::linkId(const LinkTarget& link) {
  if (link.uri.empty()) return 0;
  const std::uint32_t id = internOrSweep(m_tables.links, link);
  return id == m_tables.links.noRoom ? LinkId{0} : static_cast<LinkId>(id);
}

std::optional<ClusterId> Screen::clusterId(const std::u32string& scalars) {
  const std::uint32_t id = internOrSweep(m_tables.clusters, scalars);
  return id == m_tables.clusters.noRoom ? std::nullopt : std::optional<ClusterId>(id);
}

std::uint64_t Screen::resolveAttributes() {
  // The program is about to change the screen, so the rows below it are out of date.
  if (!showsAlternate()) m_rowsBelow.clear();
  m_attributesKnown = true;
  // In two steps, because interning the link may sweep the tables, which must find the style in use.
  m_attributes = Cell::makeAttributes(styleId(m_pen.style), 0, m_pen.isProtected);
  m_attributes = Cell::makeAttributes(Cell(m_attributes).style(), linkId(m_pen.link), m_pen.isProtected);
  m_blankKnown = false;
  return m_attributes;
}

// Erasing leaves the pen's background (terminfo's bce).
Cell Screen::blank() {
  attributes();
  if (!std::exchange(m_blankKnown, true)) {
    const bool hasBackground = m_pen.style.background != CellColor();
    m_blank =
        hasBackground ? Cell(Cell::makeAttributes(styleId({.background = m_pen.style.background}), 0, false)) : Cell();
  }
  return m_blank;
}

// Frees the table entries that no cell refers to any more.
void Screen::sweep() {
  std::vector<bool> styles(m_tables.styles.idLimit());
  std::vector<bool> clusters(m_tables.clusters.idLimit());
  std::vector<bool> links(m_tables.links.idLimit());
  const auto mark = [&](Cell cell) {
    styles[cell.style()] = true;
    links[cell.link()] = true;
    if (cell.isCluster()) clusters[cell.clusterId()] = true;
  };
  for (const Grid& grid : m_grids) {
    for (int row = 0; row < grid.rows(); ++row) {
      for (const Cell cell : grid.row(row).first(grid.state(row).extent)) {
        mark(cell);
      }
    }
  }
  mark(Cell(m_attributes));
  mark(m_blank);
  for (const Line& line : m_rowsBelow) {
    std::ranges::for_each(line.cells, mark);
  }
  for (const Line* const line : m_detachedLines) {
    std::ranges::for_each(line->cells, mark);
  }
  m_tables.styles.keepOnly([&](std::size_t id) { return styles[id]; });
  m_tables.clusters.keepOnly([&](std::size_t id) { return clusters[id]; });
  m_tables.links.keepOnly([&](std::size_t id) { return links[id]; });
  m_scrollback.forgetIds();
}

void Screen::clampCursor() {
  m_cursor.row = std::clamp(m_cursor.row, 0, rows() - 1);
  m_cursor.column = std::clamp(m_cursor.column, 0, columns() - 1);
}

void Screen::showAlternate(bool shows) {
  m_grid = &m_grids[shows ? 1 : 0];
  m_attributesKnown = m_attributesKnown && m_rowsBelow.empty();
}

void Screen::clearAlternate() {
  for (int row = 0; row < rows(); ++row) {
    m_grids[1].clearRow(row, Cell());
  }
}

void Screen::addMark(HistoryMarkKind kind, std::int32_t exitStatus) {
  const int column = m_cursor.column + (m_cursor.wrapsNext ? 1 : 0);
  m_grid->addMark(m_cursor.row, {.column = column, .kind = kind, .exitStatus = exitStatus});
}

void Screen::reset() {
  showAlternate(false);
  m_rowsBelow.clear();
  m_scrollback.endOpenLine(m_tables);
  resetPen();
  for (Grid& grid : m_grids) {
    clearGrid(grid);
  }
  resetState();
}

void Screen::startOver() {
  showAlternate(false);
  m_rowsBelow.clear();
  resetPen();
  clearGrid(m_grids[1]);
  resetState();
  int below = rows();
  while (below > 0 && m_grid->state(below - 1).extent == 0) {
    --below;
  }
  if (below == 0) return;
  setCursor({.row = below - 1, .column = 0});
  m_grid->state(below - 1).wraps = false;
  lineFeed();
}

void Screen::clearGrid(Grid& grid) {
  for (int row = 0; row < rows(); ++row) {
    grid.clearRow(row, Cell());
  }
}

void Screen::resetPen() {
  m_pen = {};
  m_attributesKnown = false;
}

void Screen::resetState() {
  modes = {};
  characterSets = {};
  protection = Protection::None;
  m_cursor = {};
  m_saved = {};
  m_lastPrinted = 0;
  m_openCluster = false;
  resetMargins();
  resetTabStops();
}

void Screen::softReset() {
  modes.origin = false;
  modes.insert = false;
  modes.autoWrap = true;
  modes.reverseWrap = false;
  modes.extendedReverseWrap = false;
  modes.leftRightMargins = false;
  characterSets = {};
  protection = Protection::None;
  style() = {};
  setProtected(false);
  m_saved[showsAlternate() ? 1 : 0] = {};
  resetMargins();
}

void Screen::resetTabStops() {
  m_tabStops = everyEighth(columns());
}

void Screen::tab(int count) {
  const int end = m_cursor.column < m_margins.columns.end ? m_margins.columns.end : columns();
  int column = m_cursor.column;
  for (count = std::min(count, columns()); count > 0 && column < end - 1; --count) {
    do {
      ++column;
    } while (column < end - 1 && !m_tabStops[static_cast<std::size_t>(column)]);
  }
  // At the edge, a tab leaves a pending wrap alone.
  if (column != m_cursor.column) setCursor({.row = m_cursor.row, .column = column});
}

void Screen::backTab(int count) {
  const int begin = modes.origin && m_cursor.column >= m_margins.columns.begin ? m_margins.columns.begin : 0;
  int column = m_cursor.column;
  for (count = std::min(count, columns()); count > 0 && column > begin; --count) {
    do {
      --column;
    } while (column > begin && !m_tabStops[static_cast<std::size_t>(column)]);
  }
  setCursor({.row = m_cursor.row, .column = column});
}

void Screen::setTabStop() {
  m_tabStops[static_cast<std::size_t>(m_cursor.column)] = true;
}

void Screen::clearTabStop() {
  m_tabStops[static_cast<std::size_t>(m_cursor.column)] = false;
}

void Screen::clearTabStops() {
  m_tabStops.assign(m_tabStops.size(), false);
}

void Screen::resetMargins() {
  m_margins = area();
}

void Screen::resetHorizontalMargins() {
  m_margins.columns = area().columns;
}

void Screen::setVerticalMargins(RowRange rows) {
  rows.end = std::min(rows.end, this->rows());
  if (rows.begin < 0 || rows.size() < 2) return;
  m_margins.rows = rows;
  moveTo({});
}

void Screen::setHorizontalMargins(ColumnRange columns) {
  columns.end = std::min(columns.end, this->columns());
  if (columns.begin < 0 || columns.size() < 2) return;
  m_margins.columns = columns;
  moveTo({});
}

}  // namespace zolt::vt
