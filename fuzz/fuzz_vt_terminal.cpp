// The full emulation on any bytes, resized between any two of them: the screen keeps its invariants, and splitting the
// bytes makes no difference.
#include <algorithm>

#include "fuzz/FuzzInput.h"
#include "tests/vt/TerminalPicture.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zolt::FuzzInput input(data, size);
  const auto side = [&] { return 1 + static_cast<int>(input.byte() % 24); };
  const int rows = side();
  const int columns = side();
  zolt::vt::TerminalSettings settings;
  settings.allowRectangleChecksums = true;
  settings.graphemeClusters = input.byte() % 2 == 0;
  zolt::vt::Terminal split({.rows = rows, .columns = columns}, settings);
  // Try the bulk path on any input.
  settings.bulkBytes = 1;
  zolt::vt::Terminal whole({.rows = rows, .columns = columns}, settings);
  const std::size_t step = 1 + input.byte() % 8;
  while (!input.empty()) {
    const unsigned length = input.byte();
    const std::string_view text = input.text(length % 128);
    whole.feed(text);
    for (std::size_t at = 0; at < text.size(); at += step) {
      split.feed(text.substr(at, step));
    }
    if (length >= 128) {
      const int newRows = side();
      const int newColumns = side();
      whole.resize({.rows = newRows, .columns = newColumns});
      split.resize({.rows = newRows, .columns = newColumns});
    }
    const std::string broken = zolt::vt::test::brokenRule(whole.screen());
    zolt::require(broken.empty(), broken);
  }
  zolt::require(zolt::vt::test::everythingOf(whole) == zolt::vt::test::everythingOf(split), "chunks make a difference");
  zolt::require(whole.takeReplies() == split.takeReplies(), "chunks make a difference to replies");
  return 0;
}
