#include "vt/Screen.h"

#include <algorithm>
#include <utility>

namespace zolt::vt {

namespace {

constexpr int kTabWidth = 8;
// After a sweep that helped little, so many refusals pass before the next: its cost stays in proportion.
constexpr std::size_t kRefusalsBetweenSweeps = 8192;

int allowedRows(int rows, int columns) {
  return std::clamp(rows, 1, std::min(Screen::maxSide, Screen::maxCells / columns));
}

int allowedColumns(int columns) {
  return std::clamp(columns, 1, Screen::maxSide);
}

std::vector<bool> everyEighth(int columns) {
  std::vector<bool> stops(static_cast<std::size_t>(columns));
  for (std::size_t column = kTabWidth; column < stops.size(); column += kTabWidth) {
    stops[column] = true;
  }
  return stops;
}

}  // namespace

Screen::Screen(int rows, int columns, HistorySettings history)
    : m_scrollback(std::move(history)),
      m_grids{Grid(allowedRows(rows, allowedColumns(columns)), allowedColumns(columns)),
              Grid(allowedRows(rows, allowedColumns(columns)), allowedColumns(columns))} {
  resetTabStops();
  resetMargins();
}

void Screen::setProtected(bool isProtected) {
  m_pen.isProtected = isProtected;
  m_penIsKnown = false;
}

void Screen::setLink(LinkTarget link) {
  m_pen.link = std::move(link);
  m_penIsKnown = false;
}

// The number of `value`, after a sweep where there is no room; `noRoom` where there is none still.
template <class Table, class Value>
std::uint32_t Screen::named(Table& table, const Value& value) {
  const std::uint32_t id = table.intern(value, false);
  if (id != Table::noRoom) return id;
  if (!table.isWorthSweeping() && ++m_refused % kRefusalsBetweenSweeps != 0) return Table::noRoom;
  sweep();
  return table.intern(value, false);
}

// The number of a style. Where there is no room for another one, it goes without direct colours' lower bits, then
// plain.
StyleId Screen::styleId(const Style& style) {
  if (style == Style()) return 0;
  const std::uint32_t id = named(m_tables.styles, style);
  if (id != m_tables.styles.noRoom) return static_cast<StyleId>(id);
  Style coarse = style;
  for (CellColor* color : {&coarse.foreground, &coarse.background, &coarse.underlineColor}) {
    if (color->kind() == CellColor::Kind::Direct) *color = CellColor::fromBits(color->bits() & 0xFFE0E0E0);
  }
  const std::uint32_t coarseId = m_tables.styles.intern(coarse);
  return coarseId == m_tables.styles.noRoom ? StyleId{0} : static_cast<StyleId>(coarseId);
}

// 0 for none, and where there is no room.
LinkId Screen::linkId(const LinkTarget& link) {
  if (link.uri.empty()) return 0;
  const std::uint32_t id = named(m_tables.links, link);
  return id == m_tables.links.noRoom ? LinkId{0} : static_cast<LinkId>(id);
}

std::optional<ClusterId> Screen::clusterId(const std::u32string& scalars) {
  const std::uint32_t id = named(m_tables.clusters, scalars);
  return id == m_tables.clusters.noRoom ? std::nullopt : std::optional<ClusterId>(id);
}

std::uint64_t Screen::newLook() {
  // Who asks for it changes what is shown: the rows below are as the program wants them from now on.
  if (!showsAlternate()) m_cut.clear();
  m_penIsKnown = true;
  // Whatever is named here is in use from now on: the next name may need a sweep.
  m_look = Cell::makeLook(styleId(m_pen.style), 0, m_pen.isProtected);
  m_look = Cell::makeLook(Cell(m_look).style(), linkId(m_pen.link), m_pen.isProtected);
  const bool hasBackground = m_pen.style.background != CellColor();
  m_blank = hasBackground ? Cell(Cell::makeLook(styleId({.background = m_pen.style.background}), 0, false)) : Cell();
  return m_look;
}

// What erasing leaves: the pen's background (the terminfo capability bce).
Cell Screen::blank() {
  look();
  return m_blank;
}

// Takes out of the tables what no cell names any more.
void Screen::sweep() {
  std::vector<bool> styles(m_tables.styles.idLimit());
  std::vector<bool> clusters(m_tables.clusters.idLimit());
  std::vector<bool> links(m_tables.links.idLimit());
  const auto mark = [&](Cell cell) {
    styles[cell.style()] = true;
    links[cell.link()] = true;
    if (cell.isCluster()) clusters[cell.clusterId()] = true;
  };
  for (Grid& grid : m_grids) {
    for (int row = 0; row < grid.rows(); ++row) {
      for (const Cell cell : grid.row(row).first(grid.state(row).extent)) {
        mark(cell);
      }
    }
  }
  mark(Cell(m_look));
  mark(m_blank);
  for (const Line& line : m_cut) {
    std::ranges::for_each(line.cells, mark);
  }
  for (const Line* const line : m_linesInHand) {
    std::ranges::for_each(line->cells, mark);
  }
  m_tables.styles.keepOnly([&](std::size_t id) { return styles[id]; });
  m_tables.clusters.keepOnly([&](std::size_t id) { return clusters[id]; });
  m_tables.links.keepOnly([&](std::size_t id) { return links[id]; });
  m_scrollback.forgetNames();
}

void Screen::clampCursor() {
  m_cursor.row = std::clamp(m_cursor.row, 0, rows() - 1);
  m_cursor.column = std::clamp(m_cursor.column, 0, columns() - 1);
}

void Screen::showAlternate(bool shows) {
  m_grid = &m_grids[shows ? 1 : 0];
  m_penIsKnown = m_penIsKnown && m_cut.empty();
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
  m_cut.clear();
  m_scrollback.endOpenLine(m_tables);
  m_pen = {};
  m_penIsKnown = false;
  for (Grid& grid : m_grids) {
    for (int row = 0; row < rows(); ++row) {
      grid.clearRow(row, Cell());
    }
  }
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
  const int end = m_cursor.column < m_right ? m_right : columns();
  int column = m_cursor.column;
  for (count = std::min(count, columns()); count > 0 && column < end - 1; --count) {
    do {
      ++column;
    } while (column < end - 1 && !m_tabStops[static_cast<std::size_t>(column)]);
  }
  // A tab at the edge leaves a character that is about to wrap where it is.
  if (column != m_cursor.column) place(m_cursor.row, column);
}

void Screen::backTab(int count) {
  const int begin = modes.origin && m_cursor.column >= m_left ? m_left : 0;
  int column = m_cursor.column;
  for (count = std::min(count, columns()); count > 0 && column > begin; --count) {
    do {
      --column;
    } while (column > begin && !m_tabStops[static_cast<std::size_t>(column)]);
  }
  place(m_cursor.row, column);
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
  m_top = 0;
  m_bottom = rows();
  resetHorizontalMargins();
}

void Screen::resetHorizontalMargins() {
  m_left = 0;
  m_right = columns();
}

void Screen::setVerticalMargins(int top, int bottom) {
  bottom = std::min(bottom, rows());
  if (top < 0 || top >= bottom - 1) return;
  m_top = top;
  m_bottom = bottom;
  moveTo(0, 0);
}

void Screen::setHorizontalMargins(int left, int right) {
  right = std::min(right, columns());
  if (left < 0 || left >= right - 1) return;
  m_left = left;
  m_right = right;
  moveTo(0, 0);
}

}  // namespace zolt::vt
