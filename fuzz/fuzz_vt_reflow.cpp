// Any text on a screen that is resized arbitrarily: no line changes, and the screen keeps its invariants.
#include <array>
#include <string>

#include "fuzz/FuzzInput.h"
#include "tests/vt/TerminalPicture.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zolt::FuzzInput input(data, size);
  const auto side = [&] { return 1 + static_cast<int>(input.byte() % 40); };
  zolt::vt::TerminalSettings settings;
  settings.graphemeClusters = input.byte() % 2 == 0;
  zolt::vt::Terminal terminal({.rows = side(), .columns = side()}, settings);
  const std::string_view pieces[] = {"a",
                                     " ",
                                     "word ",
                                     "\xC3\xA9",
                                     "\xE4\xB8\xAD",
                                     "e\xCC\x81",
                                     "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7",
                                     "\r\n",
                                     "\033[1m",
                                     "\033[0m",
                                     "\033[44m",
                                     "\033]8;;http://a.b\033\\",
                                     "\033]133;A\033\\",
                                     "\033[A",
                                     "\033[3D",
                                     "\033[2;3H",
                                     "\033]8;;\033\\",
                                     "0123456789",
                                     "\xE2\x9D\xA4\xEF\xB8\x8F",
                                     "\r\n\r\n"};
  while (!input.empty()) {
    for (unsigned count = input.byte() % 64; count > 0 && !input.empty(); --count) {
      terminal.feed(pieces[input.byte() % std::size(pieces)]);
    }
    const std::string before = zolt::vt::test::linesOf(terminal.screen());
    const int rows = terminal.screen().rows();
    const int columns = terminal.screen().columns();
    for (unsigned count = 1 + input.byte() % 4; count > 0; --count) {
      terminal.resize({.rows = side(), .columns = side()});
      const std::string broken = zolt::vt::test::brokenRule(terminal.screen());
      zolt::require(broken.empty(), broken);
    }
    terminal.resize({.rows = rows, .columns = columns});
    zolt::require(zolt::vt::test::linesOf(terminal.screen()) == before, "text is the same there and back");
  }
  return 0;
}
