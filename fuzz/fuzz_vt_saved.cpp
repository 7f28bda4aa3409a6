// The saved state of the full emulation. Any bytes are an error or a terminal that can be used; what a terminal saves
// after any output makes one that goes on like it, also when some of those bytes are changed.
#include <string>

#include "fuzz/FuzzInput.h"
#include "tests/vt/SavedCheck.h"

namespace {

using zolt::vt::Terminal;
using zolt::vt::TerminalSettings;

void useIfRestored(std::string_view bytes, const TerminalSettings& settings) {
  const auto restored = Terminal::restored(bytes, settings);
  if (!restored) return zolt::require(!restored.reason().empty(), "an error says what is wrong");
  const std::string error = zolt::vt::test::useError(*restored.value());
  zolt::require(error.empty(), error);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zolt::FuzzInput input(data, size);
  TerminalSettings settings;
  const unsigned kind = input.byte();
  settings.graphemeClusters = kind % 2 == 0;
  settings.bulkBytes = kind % 4 < 2 ? 1 : 4096;
  if (kind >= 128) {
    useIfRestored(input.rest(), settings);
    return 0;
  }
  const auto side = [&] { return 1 + static_cast<int>(input.byte() % 24); };
  const int rows = side();
  const int columns = side();
  Terminal terminal({.rows = rows, .columns = columns}, settings);
  for (unsigned length = 255; length >= 128 && !input.empty();) {
    length = input.byte();
    terminal.feed(input.text(length % 128));
    if (length >= 192) terminal.resize({.rows = side(), .columns = side()});
  }
  std::string bytes = terminal.saved();
  if (kind < 64) {
    const std::string error = zolt::vt::test::continuationError(terminal, input.rest());
    zolt::require(error.empty(), error);
    return 0;
  }
  while (!input.empty()) {
    const std::size_t high = input.byte();
    const std::size_t at = (high << 8 | input.byte()) % bytes.size();
    bytes[at] = static_cast<char>(input.byte());
  }
  useIfRestored(bytes, settings);
  return 0;
}
