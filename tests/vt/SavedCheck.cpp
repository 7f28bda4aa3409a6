#include "vt/SavedCheck.h"

#include <algorithm>
#include <cstdint>
#include <sstream>

#include "vt/SnapshotCheck.h"
#include "vt/TerminalPicture.h"
#include "vt/functions/Modes.h"
#include "vt/history/ScrollbackText.h"

namespace zolt::vt::test {

namespace {

bool haveSameRows(const ScreenSnapshot::Rows& one, const ScreenSnapshot::Rows& other) {
  return std::ranges::equal(one, other, [](const auto& a, const auto& b) { return haveSameContent(*a, *b); });
}

std::string snapshotDifference(const ScreenSnapshot& one, const ScreenSnapshot& other) {
  if (one.size != other.size || one.isAlternate != other.isAlternate) return "another screen";
  if (!haveSameRows(one.rows, other.rows)) return "other rows";
  if (one.isAlternate && !haveSameRows(*one.primaryRows, *other.primaryRows)) return "other rows of the primary screen";
  if (one.continuesHistory != other.continuesHistory) return "another first line";
  if (one.history.end() != other.history.end()) return "another position in the history";
  if (one.history.endLine() != other.history.endLine()) return "other numbers of lines";
  if (one.graphemeClusters != other.graphemeClusters) return "other clusters";
  if (one.cursor != other.cursor) return "another cursor";
  if (one.reverseScreen != other.reverseScreen || one.input != other.input) return "other modes";
  if (*one.palette != *other.palette) return "other colours";
  if (one.title != other.title || one.progress != other.progress) return "another title or progress";
  if (one.workingDirectory != other.workingDirectory) return "another folder";
  return one.workingDirectoryHost != other.workingDirectoryHost ? "another host" : "";
}

std::string eventsOf(Terminal& terminal) {
  const TerminalEvents events = terminal.takeEvents();
  std::ostringstream out;
  out << events.bells << ' ' << events.titleChanged << events.paletteChanged;
  for (const ClipboardWrite& write : events.clipboardWrites) {
    out << " write " << static_cast<int>(write.target) << write.text;
  }
  for (const ClipboardTarget target : events.clipboardReads) {
    out << " read " << static_cast<int>(target);
  }
  for (const Notification& notification : events.notifications) {
    out << " notify " << notification.title << ';' << notification.body;
  }
  for (const WindowRequest& request : events.windowRequests) {
    out << " window " << static_cast<int>(request.kind) << ' ' << request.first << ' ' << request.second;
  }
  return out.str();
}

// Two bytes for each of the text: the byte, and one that tells its style and link.
std::string historyOf(const Terminal& terminal) {
  std::string text;
  terminal.screen().scrollback().forEachLine([&](HistoryLine&& line) {
    std::size_t at = 0;
    for (const HistoryLine::Run& run : line.runs) {
      const std::size_t look = StyleHash()(run.style) ^ LinkHash()(run.link);
      for (const std::size_t end = at + run.length; at < end; ++at) {
        text += line.text[at];
        text += static_cast<char>(look);
      }
    }
    if (line.isEnded) text.append("\n", 2);
  });
  return text;
}

}  // namespace

std::string differenceTo(Terminal& restored, Terminal& original) {
  if (restored.takeReplies() != original.takeReplies()) return "other replies";
  if (eventsOf(restored) != eventsOf(original)) return "other events";
  const std::string snapshot = snapshotDifference(*restored.snapshot(), *original.snapshot());
  if (!snapshot.empty()) return snapshot;
  for (const Mode& mode : modeTable()) {
    if (mode.isSet(restored.state()) != mode.isSet(original.state()))
      return "another mode " + std::to_string(mode.number);
  }
  if (restored.saved() != original.saved()) return "other bytes";
  const Screen::RowsBelow below = restored.screen().rowsBelow();
  const Screen::RowsBelow originalBelow = original.screen().rowsBelow();
  if (below.text != originalBelow.text || below.continuesLastRow != originalBelow.continuesLastRow) {
    return "other rows below the screen";
  }
  const std::uint64_t skipped = restored.screen().scrollback().begin() - original.screen().scrollback().begin();
  const std::string history = historyOf(original);
  if (history.substr(std::min<std::size_t>(2 * skipped, history.size())) != historyOf(restored)) {
    return "another history";
  }
  return {};
}

std::string continuationError(Terminal& terminal, std::string_view rest) {
  terminal.takeReplies();
  terminal.takeEvents();
  const std::string bytes = terminal.saved();
  auto restored = Terminal::restored(bytes, terminal.state().settings, terminal.state().now);
  if (!restored) return restored.reason();
  Terminal& other = *restored.value();
  if (other.saved() != bytes) return "saved again, it is other bytes";
  if (const std::string difference = differenceTo(other, terminal); !difference.empty()) return "at once " + difference;
  terminal.feed(rest);
  other.feed(rest);
  if (const std::string broken = brokenRule(other.screen()); !broken.empty()) return "broken: " + broken;
  const std::string difference = differenceTo(other, terminal);
  return difference.empty() ? "" : "later " + difference;
}

std::string useError(Terminal& terminal) {
  const auto error = [&] {
    if (const std::string broken = brokenRule(terminal.screen()); !broken.empty()) return broken;
    if (const std::string broken = snapshotError(terminal); !broken.empty()) return broken;
    const ScrollbackText history(terminal.snapshot()->history);
    bool isInOrder = history.begin() <= history.end() && history.end() == history.view().end();
    for (std::uint64_t line = history.firstLine(); line < history.endLine(); ++line) {
      const TextPosition start = history.lineStart(line);
      isInOrder = isInOrder && history.begin() <= start && start <= history.lineEnd(line);
    }
    return std::string(isInOrder ? "" : "the history's positions are not in order");
  };
  if (const std::string broken = error(); !broken.empty()) return "at first: " + broken;
  const std::string again = terminal.saved();
  const auto restored = Terminal::restored(again, terminal.state().settings, terminal.state().now);
  if (!restored) return restored.reason();
  if (restored.value()->saved() != again) return "saved again, it is other bytes";
  constexpr std::string_view kOutput =
      "\033\\text e\u0301 \u6F22\u5B57\U0001F469\u200D\U0001F467\033[5b\t\r\n\033[31mmore\033[K\033[2J\033[L\033[M\n\n"
      "\0338\033[#}\033[#Q\033[23t\033[<9u\033[?7r\033M\033[?6n\033[2;2;4;9$z\033]8;;x:y\033\\z\b\b\033[@\033[P";
  terminal.feed(kOutput);
  if (const std::string broken = error(); !broken.empty()) return "fed: " + broken;
  const TerminalSize before = terminal.state().size;
  for (const TerminalSize& size : {TerminalSize{.rows = before.rows / 2 + 1, .columns = before.columns / 2 + 1},
                                   TerminalSize{.rows = 1, .columns = 1}, TerminalSize{.rows = 7, .columns = 33}}) {
    terminal.resize(size);
    terminal.feed(kOutput);
    if (const std::string broken = error(); !broken.empty()) return "resized: " + broken;
  }
  terminal.feed("\033[?1049l\033[?1049h\033[?47l");
  terminal.resize(before);
  if (const std::string broken = error(); !broken.empty()) return "on the other screen: " + broken;
  terminal.feed("\033c" + std::string(kOutput));
  const std::string broken = error();
  return broken.empty() ? "" : "reset: " + broken;
}

}  // namespace zolt::vt::test
