#include "vt/snapshot/SnapshotRow.h"

#include <algorithm>
#include <span>

#include "vt/cells/CellRuns.h"

namespace zolt::vt {

namespace {

using Width = Cell::Width;

// The cells that are text: neither the blanks at the end of a line nor the filler where a row wraps.
std::span<const Cell> textCells(const Grid& grid, int row) {
  const RowInfo& state = grid.state(row);
  std::span<const Cell> cells = grid.row(row).first(state.extent);
  const auto isText = [&](Cell cell) { return cell.width() != Width::Filler && (state.wraps || !cell.isBlank()); };
  while (!cells.empty() && !isText(cells.back())) {
    cells = cells.first(cells.size() - 1);
  }
  return cells;
}

std::uint64_t runAttributes(Cell cell) {
  return Cell::makeAttributes(cell.style(), cell.link(), false);
}

bool haveSameTarget(const std::shared_ptr<const LinkTarget>& one, const std::shared_ptr<const LinkTarget>& other) {
  return one == other || (one && other && *one == *other);
}

}  // namespace

bool haveSameContent(const SnapshotRow& one, const SnapshotRow& other) {
  const auto sameRun = [](const SnapshotRow::Run& a, const SnapshotRow::Run& b) {
    return a.bytes == b.bytes && a.columns == b.columns && a.style == b.style && haveSameTarget(a.link, b.link);
  };
  return one.text == other.text && one.clusters == other.clusters && one.columns == other.columns &&
         one.wraps == other.wraps && one.marks == other.marks && std::ranges::equal(one.runs, other.runs, sameRun);
}

std::size_t byteAt(const SnapshotRow& row, int column) {
  std::size_t byte = 0;
  int at = 0;
  for (const SnapshotRow::Cluster& cluster : row.clusters) {
    if (cluster.column >= column) break;
    const int after = cluster.column + cluster.columns;
    if (column < after) return cluster.begin;
    byte = cluster.end;
    at = after;
  }
  return std::min(byte + static_cast<std::size_t>(column - at), row.text.size());
}

SnapshotRow snapshotRow(const Grid& grid, int row, const CellTables& tables, std::uint64_t stamp) {
  SnapshotRow snapshot;
  snapshot.stamp = stamp;
  snapshot.wraps = grid.state(row).wraps;
  const std::span<const RowMark> marks = grid.marks(row);
  snapshot.marks.assign(marks.begin(), marks.end());
  const std::span<const Cell> cells = textCells(grid, row);
  std::string& text = snapshot.text;
  text.reserve(cells.size());
  LinkId lastLink = 0;
  std::shared_ptr<const LinkTarget> lastTarget;
  for (std::size_t at = 0; at < cells.size();) {
    const std::uint64_t attributes = runAttributes(cells[at]);
    SnapshotRow::Run run;
    run.style = tables.styles[cells[at].style()];
    if (const LinkId link = cells[at].link(); link != 0) {
      if (link != lastLink) lastTarget = std::make_shared<const LinkTarget>(tables.links[link]);
      lastLink = link;
      run.link = lastTarget;
    }
    const std::size_t begin = text.size();
    const std::size_t first = at;
    while (at < cells.size() && runAttributes(cells[at]) == attributes) {
      const Cell cell = cells[at];
      const std::size_t before = text.size();
      const bool isWide = cell.width() == Width::Wide;
      tables.appendText(cell, text);
      const bool isAscii = text.size() == before + 1 && !isWide && static_cast<unsigned char>(text.back()) < 0x80;
      if (text.size() != before && !isAscii) {
        snapshot.clusters.push_back({.begin = static_cast<std::uint32_t>(before),
                                     .end = static_cast<std::uint32_t>(text.size()),
                                     .column = static_cast<std::uint16_t>(at),
                                     .columns = static_cast<std::uint8_t>(isWide ? 2 : 1)});
      }
      ++at;
    }
    run.bytes = static_cast<std::uint32_t>(text.size() - begin);
    run.columns = static_cast<std::uint16_t>(at - first);
    snapshot.runs.push_back(std::move(run));
  }
  snapshot.columns = static_cast<std::uint16_t>(cells.size());
  return snapshot;
}

}  // namespace zolt::vt
