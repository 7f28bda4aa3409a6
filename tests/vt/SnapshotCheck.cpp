#include "vt/SnapshotCheck.h"

#include "vt/snapshot/SnapshotRow.h"

namespace zolt::vt::test {

namespace {

// The rules that hold for any row by itself.
std::string brokenRowRule(const SnapshotRow& row, int columns) {
  if (row.columns > columns) return "is wider than the screen";
  std::size_t bytes = 0;
  int inRuns = 0;
  for (const SnapshotRow::Run& run : row.runs) {
    bytes += run.bytes;
    inRuns += run.columns;
  }
  if (bytes != row.text.size() || inRuns != row.columns) return "has runs that do not cover it";
  std::size_t plain = row.text.size();
  int plainColumns = row.columns;
  for (const SnapshotRow::Cluster& cluster : row.clusters) {
    plain -= cluster.end - cluster.begin;
    plainColumns -= cluster.columns;
    if (cluster.column + cluster.columns > row.columns) return "has a cluster that reaches beyond it";
  }
  if (static_cast<int>(plain) != plainColumns) return "has plain text of another length than its columns";
  return {};
}

}  // namespace

std::string snapshotError(Terminal& terminal) {
  const auto snapshot = terminal.snapshot();
  const Screen& screen = terminal.screen();
  if (static_cast<int>(snapshot->rows.size()) != screen.rows()) return "another number of rows";
  if (snapshot->isAlternate != (snapshot->primaryRows != nullptr)) return "no primary screen behind the alternate one";
  for (int row = 0; row < screen.rows(); ++row) {
    const auto isPrimary = [&] {
      return haveSameContent(*snapshot->primaryRows->at(static_cast<std::size_t>(row)),
                             snapshotRow(screen.grid(false), row, screen.tables(), 0));
    };
    if (snapshot->isAlternate && !isPrimary()) return "primary row " + std::to_string(row) + " is out of date";
    const SnapshotRow& shown = *snapshot->rows[static_cast<std::size_t>(row)];
    const std::string which = "row " + std::to_string(row) + " ";
    if (!haveSameContent(shown, snapshotRow(screen.grid(), row, screen.tables(), 0))) return which + "is out of date";
    if (const std::string broken = brokenRowRule(shown, screen.columns()); !broken.empty()) return which + broken;
    for (int above = 0; above < row; ++above) {
      const auto& other = snapshot->rows[static_cast<std::size_t>(above)];
      if (other->stamp == shown.stamp) return which + "has the stamp of another";
    }
  }
  const Position at = snapshot->cursor.position;
  if (!screen.area().contains(at) || at.column + snapshot->cursor.columns > screen.columns()) return "cursor outside";
  return {};
}

}  // namespace zolt::vt::test
