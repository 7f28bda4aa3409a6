#include "vt/TerminalPicture.h"

#include <sstream>

#include "vt/cells/Sgr.h"
#include "vt/functions/Modes.h"

namespace zolt::vt::test {

namespace {

void describeRow(const Screen& screen, int row, std::ostream& out) {
  const CellTables& tables = screen.tables();
  const Grid& grid = screen.grid();
  for (const Cell cell : grid.row(row)) {
    std::string text;
    tables.appendText(cell, text);
    out << (cell.isErased() ? "~" : text) << '{' << static_cast<int>(cell.width()) << ','
        << renditionParameters(tables.styles[cell.style()]) << ',' << tables.links[cell.link()].id << ','
        << tables.links[cell.link()].uri << (cell.isProtected() ? ",p" : "") << '}';
  }
  out << (grid.state(row).wraps ? " wraps" : "");
  for (const RowMark& mark : grid.marks(row)) {
    out << " mark " << static_cast<int>(mark.kind) << ' ' << mark.column << ' ' << mark.exitStatus;
  }
  out << '\n';
}

}  // namespace

std::string everythingOf(const Terminal& terminal) {
  std::ostringstream out;
  const Screen& screen = terminal.screen();
  const TerminalState& state = terminal.state();
  const Cursor& cursor = screen.cursor();
  out << "cursor " << cursor.row << ' ' << cursor.column << ' ' << cursor.wrapsNext << '\n';
  out << "title " << state.title << " icon " << state.iconTitle << " folder " << state.workingDirectory << '\n';
  out << "pen " << renditionParameters(screen.pen().style) << ' ' << screen.pen().isProtected << '\n';
  for (const Mode& mode : modeTable()) {
    out << mode.isSet(state);
  }
  const Rectangle margins = screen.margins();
  out << " margins " << margins.rows.begin << ' ' << margins.rows.end << ' ' << margins.columns.begin << ' '
      << margins.columns.end << '\n';
  for (int row = 0; row < screen.rows(); ++row) {
    describeRow(screen, row, out);
  }
  screen.scrollback().forEachLine([&](HistoryLine&& line) {
    std::size_t at = 0;
    for (const HistoryLine::Run& run : line.runs) {
      out << line.text.substr(at, run.length) << '{' << renditionParameters(run.style) << ',' << run.link.uri << '}';
      at += run.length;
    }
    for (const HistoryMark& mark : line.marks) {
      out << " mark " << static_cast<int>(mark.kind) << ' ' << mark.offset;
    }
    out << (line.isEnded ? "|" : "+") << '\n';
  });
  return out.str();
}

std::string linesOf(const Screen& screen) {
  std::string text;
  screen.scrollback().forEachLine([&](HistoryLine&& line) {
    text += line.text;
    if (line.isEnded) text += '\n';
  });
  const Grid& grid = screen.grid();
  const Screen::RowsBelow below = screen.rowsBelow();
  for (int row = 0; row < screen.rows(); ++row) {
    std::span<const Cell> cells = grid.row(row).first(grid.state(row).extent);
    const bool wraps = grid.state(row).wraps || (below.continuesLastRow && row == screen.rows() - 1);
    while (!wraps && !cells.empty() && cells.back().isBlank()) {
      cells = cells.first(cells.size() - 1);
    }
    for (const Cell cell : cells) {
      screen.tables().appendText(cell, text);
    }
    if (!wraps) text += '\n';
  }
  text += below.text;
  while (!text.empty() && text.back() == '\n') {
    text.pop_back();
  }
  return text;
}

std::string brokenRule(const Screen& screen) {
  const Grid& grid = screen.grid();
  const Cursor& cursor = screen.cursor();
  const Rectangle margins = screen.margins();
  if (cursor.row < 0 || cursor.row >= screen.rows()) return "the cursor's row is on the screen";
  if (cursor.column < 0 || cursor.column >= screen.columns()) return "the cursor's column is on the screen";
  const auto& [rows, columns] = margins;
  if (rows.begin < 0 || rows.isEmpty() || rows.end > screen.rows()) return "margins hold rows";
  if (columns.begin < 0 || columns.isEmpty() || columns.end > screen.columns()) return "margins hold columns";
  if (screen.tabStops().size() != static_cast<std::size_t>(screen.columns())) return "every column may have a tab stop";
  for (int row = 0; row < screen.rows(); ++row) {
    const std::span<const Cell> cells = grid.row(row);
    const std::size_t extent = grid.state(row).extent;
    if (extent > cells.size()) return "a row's extent is in it";
    for (std::size_t column = 0; column < cells.size(); ++column) {
      const Cell cell = cells[column];
      if (column >= extent && !cell.isBlank()) return "nothing is behind a row's extent";
      const bool isHead = cell.width() == Cell::Width::Wide;
      if (isHead && (column + 1 == cells.size() || cells[column + 1].width() != Cell::Width::Tail)) {
        return "a wide character has a second half";
      }
      const bool isTail = cell.width() == Cell::Width::Tail;
      if (isTail && (column == 0 || cells[column - 1].width() != Cell::Width::Wide)) return "half a character is none";
      if (cell.width() == Cell::Width::Filler && column + 1 != cells.size()) return "fillers stand at the end";
      if (cell.style() >= screen.tables().styles.idLimit()) return "a cell's style is known";
      if (cell.link() >= screen.tables().links.idLimit()) return "a cell's link is known";
      if (cell.isCluster() && cell.clusterId() >= screen.tables().clusters.idLimit())
        return "a cell's cluster is known";
      if (cell.isCluster() && screen.tables().clusters[cell.clusterId()].empty()) return "a cell's cluster was kept";
    }
  }
  return {};
}

}  // namespace zolt::vt::test
