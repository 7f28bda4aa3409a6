// Snapshots of the full emulation's screen on any bytes, resized between any two of them: one that shares rows with the
// one before equals one made from scratch.
#include "fuzz/FuzzInput.h"
#include "tests/vt/SnapshotCheck.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zolt::FuzzInput input(data, size);
  const auto side = [&] { return 1 + static_cast<int>(input.byte() % 24); };
  const int rows = side();
  const int columns = side();
  zolt::vt::TerminalSettings settings;
  settings.graphemeClusters = input.byte() % 2 == 0;
  settings.bulkBytes = 1 + input.byte() * 16U;
  zolt::vt::Terminal terminal({.rows = rows, .columns = columns}, settings);
  while (!input.empty()) {
    const unsigned length = input.byte();
    terminal.feed(input.text(length % 64));
    if (length >= 192) terminal.resize({.rows = side(), .columns = side()});
    const std::string error = zolt::vt::test::snapshotError(terminal);
    zolt::require(error.empty(), error);
  }
  return 0;
}
