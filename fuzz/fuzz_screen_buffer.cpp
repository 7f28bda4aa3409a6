// The screen buffer with random text, sizes and cursor positions: the grid always has the size it reports.
#include "emulation/TerminalScreenBuffer.h"
#include "fuzz/FuzzInput.h"
#include "text/GraphemeClusters.h"

namespace {

void check(const zolt::TerminalScreenBuffer& buffer) {
  zolt::require(static_cast<std::int64_t>(buffer.cells().size()) == buffer.rows(), "the number of rows is wrong");
  for (const auto& row : buffer.cells()) {
    zolt::require(static_cast<std::int64_t>(row.size()) == buffer.cols(), "a row has the wrong width");
  }
  zolt::require(buffer.cursorPosition.row >= 0 && buffer.cursorPosition.col >= 0, "a negative cursor");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zolt::FuzzInput input(data, size);
  zolt::TerminalScreenBuffer buffer;
  // At least one row: a line feed in a grid without rows stops the program by design.
  buffer.resize(1 + input.byte() % 30, input.byte() % 90);
  while (!input.empty()) {
    const unsigned kind = input.byte();
    if (kind % 8 == 0) {
      buffer.resize(1 + input.byte() % 30, input.byte() % 90);
    } else if (kind % 8 == 1) {
      buffer.clear();
    } else if (kind % 8 == 2) {
      buffer.cursorPosition = {.row = input.byte() % 40, .col = input.byte() % 100};
    } else {
      const std::string_view text = input.text(kind);
      if (!zolt::isValidUtf8(text)) continue;
      buffer.parseAndRender(text);
    }
    check(buffer);
  }
  return 0;
}
