// The full emulation's parser on any bytes: it reports the same events whole, in chunks and without its fast paths.
#include "fuzz/FuzzInput.h"
#include "tests/vt/RecordedEvents.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zolt::FuzzInput input(data, size);
  const std::size_t step = 1 + input.byte() % 16;
  const std::string_view text = input.rest();
  zolt::vt::RecordedEvents whole;
  zolt::vt::Parser(whole).feed(text);
  zolt::vt::RecordedEvents byTable;
  zolt::vt::Parser(byTable).feedByTable(text);
  zolt::require(whole.lines == byTable.lines, "the fast path tells something else than the table");
  zolt::vt::RecordedEvents split;
  zolt::vt::Parser parser(split);
  for (std::size_t at = 0; at < text.size(); at += step) {
    parser.feed(text.substr(at, step));
  }
  zolt::require(whole.lines == split.lines, "chunks report other events than the whole");
  return 0;
}
