// The full emulation's operating system commands and device control strings: what is stored is clean and bounded, and
// replies contain none of the program's bytes.
#include <algorithm>
#include <string>

#include "fuzz/FuzzInput.h"
#include "tests/vt/TerminalPicture.h"
#include "vt/functions/Osc.h"

namespace {

bool isClean(std::string_view text, std::size_t maxBytes) {
  const bool hasControl =
      std::ranges::any_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; });
  return !hasControl && text.size() <= maxBytes;
}

// ESC and BEL are the only control characters in a reply.
bool isAnswer(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c == '\033' || c == '\007' || (c >= 0x20 && c < 0x7F); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  zolt::FuzzInput input(data, size);
  zolt::vt::Terminal terminal({.rows = 4, .columns = 12});
  const auto commands = zolt::vt::oscCommands();
  while (!input.empty()) {
    const unsigned kind = input.byte();
    const std::string_view text = input.text(input.byte());
    std::string bytes;
    if (kind < 160) {
      bytes = "\033]" + std::to_string(commands[kind % commands.size()].number) + ";" + std::string(text);
    } else if (kind < 200) {
      bytes = (kind % 2 == 0 ? "\033P$q" : "\033P+q") + std::string(text);
    } else {
      bytes = std::string(text);
    }
    terminal.feed(bytes);
    terminal.feed(kind % 3 == 0 ? "\007" : "\033\\");
    terminal.feed("x");
    zolt::require(isAnswer(terminal.takeReplies()), "an answer is printable");
    zolt::require(isClean(terminal.state().title, 1024), "a title is clean");
    zolt::require(isClean(terminal.state().iconTitle, 1024), "an icon's title is clean");
    zolt::require(isClean(terminal.state().workingDirectoryHost, 255), "a host is clean");
    zolt::require(terminal.state().workingDirectory.size() <= 4096, "a folder is bounded");
    zolt::require(terminal.screen().pen().link.uri.size() <= 2083, "an address is bounded");
    zolt::require(isClean(terminal.screen().pen().link.uri, 2083), "an address is clean");
    const int percent = terminal.state().progress.percent;
    zolt::require(percent >= 0 && percent <= 100, "progress is in percent");
    const zolt::vt::TerminalEvents events = terminal.takeEvents();
    zolt::require(events.clipboardReads.empty(), "the clipboard is not read");
    zolt::require(events.clipboardWrites.size() <= 2, "a clipboard is written once");
    for (const auto& notification : events.notifications) {
      zolt::require(isClean(notification.title, 256) && isClean(notification.body, 1024), "a message is clean");
    }
    const std::string broken = zolt::vt::test::brokenRule(terminal.screen());
    zolt::require(broken.empty(), broken);
  }
  return 0;
}
