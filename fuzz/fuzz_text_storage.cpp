// The text storage and the row index against a naive implementation. Each input byte stands for a piece of text, so
// that short inputs fill several blocks.
#include <algorithm>
#include <array>
#include <string>

#include "fuzz/FuzzInput.h"
#include "history/NaiveLog.h"
#include "history/RowIndex.h"
#include "history/TextStorage.h"

namespace {

using namespace zolt;

constexpr std::size_t kCapacity = TextBlock::capacity;

std::string pieceFor(unsigned byte, std::size_t size) {
  constexpr std::array<const char*, 10> kPieces{"a",  "word ", "\n",   "\r",     "\r\n",
                                                "\t", "\n\n",  "x\ty", "\t\t\n", "ab\r"};
  if (byte >= 250) {
    // Fills the open block exactly, or up to 3 bytes less or 2 more.
    const std::size_t room = kCapacity - size % kCapacity;
    return std::string(std::max<std::size_t>(room + byte, 253) - 253, byte % 2 == 0 ? 'x' : '\t');
  }
  if (byte >= 240) return std::string(8000, 'x');
  return kPieces[byte % kPieces.size()];
}

void check(const TextStorage& storage, const NaiveLog& naive, RowIndex& index, unsigned where) {
  const auto lines = naive.lines();
  require(storage.size() == naive.text().size() && storage.lineCount() == lines.size(), "the sizes differ");
  require(storage.text(0, storage.size()) == naive.text(), "the texts differ");
  for (std::uint64_t line = 0; line < lines.size(); ++line) {
    require(storage.lineStart(line) == lines[line].begin && storage.lineEnd(line) == lines[line].contentEnd,
            "a line is elsewhere");
  }
  const NaiveRows rows(naive, index.columns());
  const TextPosition asked = (where * kCapacity / 16) % (storage.size() + 1);
  const RowIndex::Row estimated = index.locate(index.rowAt(asked));
  require(estimated.begin == rows[rows.rowAt(asked)].begin, "rows differ before the counts are exact");
  while (index.refine(1)) {
  }
  require(index.rowCount() == rows.count(), "the row counts differ");
  for (std::int64_t row = 0; row < rows.count(); row += 1 + rows.count() / 50) {
    const RowIndex::Row located = index.locate(row);
    require(located.begin == rows[row].begin && located.end == rows[row].end &&
                located.firstColumn == rows[row].firstColumn && located.beginColumn == rows[row].beginColumn,
            "a row is elsewhere");
    require(index.rowAt(rows[row].begin) == rows.rowAt(rows[row].begin), "a position is in another row");
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  FuzzInput input(data, std::min<std::size_t>(size, 200));
  TextStorage storage;
  NaiveLog naive;
  RowIndex index(storage, 1 + input.byte());
  const unsigned where = input.byte();
  while (!input.empty() && storage.size() < 4 * kCapacity) {
    const std::string piece = pieceFor(input.byte(), storage.size());
    storage.append(AttributedString(piece, {}));
    naive.append(piece);
    if (piece.size() % 2 == 0) index.sync();
  }
  index.sync();
  check(storage, naive, index, where);
  index.setColumns(1 + input.byte());
  check(storage, naive, index, where + 7);
  return 0;
}
