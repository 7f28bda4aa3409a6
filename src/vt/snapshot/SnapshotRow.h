#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "vt/cells/CellTables.h"
#include "vt/cells/RowMark.h"
#include "vt/cells/Style.h"
#include "vt/screen/Grid.h"

namespace zolt::vt {

/// A row of the screen at one moment, with everything that its cells refer to. Immutable; any thread.
///
/// Its text is what the row adds to its line when it scrolls off. Cells past `columns` are blank.
struct SnapshotRow {
  /// A character that is not ASCII, or a cluster: the text [begin, end) over these columns.
  struct Cluster {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::uint16_t column = 0;
    std::uint8_t columns = 1;

    friend bool operator==(const Cluster&, const Cluster&) = default;
  };
  /// Consecutive cells with one style and link.
  struct Run {
    std::uint32_t bytes = 0;
    std::uint16_t columns = 0;
    Style style;
    std::shared_ptr<const LinkTarget> link;  ///< null: none
  };

  std::uint64_t stamp = 0;  ///< differs between any two rows that a terminal has shown, unless they are the same object
  std::string text;         ///< UTF-8
  std::vector<Run> runs;    ///< of the whole text, in order
  std::vector<Cluster> clusters;  ///< in order; every other character is ASCII in one column
  std::uint16_t columns = 0;      ///< that the text takes
  bool wraps = false;             ///< the next row continues its line
  std::vector<RowMark> marks;
};

/// Whether two rows show the same, whatever their stamps.
bool haveSameContent(const SnapshotRow& one, const SnapshotRow& other);

/// Where the character in `column` begins in the row's text; the text's end for a column past it.
std::size_t byteAt(const SnapshotRow& row, int column);

/// Row `row` of `grid`.
SnapshotRow snapshotRow(const Grid& grid, int row, const CellTables& tables, std::uint64_t stamp);

}  // namespace zolt::vt
