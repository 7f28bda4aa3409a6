#include "vt/RecordingPicture.h"

#include <iomanip>
#include <sstream>

#include "vt/cells/Sgr.h"
#include "vt/functions/Modes.h"

namespace zolt::vt::test {

namespace {

std::string visible(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    if (c == '\033') {
      text += "ESC ";
    } else if (c == '\007') {
      text += "BEL ";
    } else {
      text += c;
    }
  }
  return text;
}

void describeStyles(const Screen& screen, int row, std::ostream& out) {
  const std::span<const Cell> cells = screen.grid().row(row);
  for (std::size_t begin = 0; begin < cells.size();) {
    std::size_t end = begin + 1;
    while (end < cells.size() && cells[end].attributes() == cells[begin].attributes()) {
      ++end;
    }
    const Cell cell = cells[begin];
    if (cell.attributes() != 0) {
      out << std::setw(2) << row + 1 << ": " << begin + 1 << '-' << end << ' '
          << renditionParameters(screen.tables().styles[cell.style()]) << (cell.isProtected() ? " protected" : "");
      if (cell.link() != 0) out << ' ' << screen.tables().links[cell.link()].uri;
      out << '\n';
    }
    begin = end;
  }
}

}  // namespace

std::string recordingPicture(Terminal& terminal) {
  std::ostringstream out;
  out << std::setfill('0');
  const Screen& screen = terminal.screen();
  const TerminalState& state = terminal.state();
  const Cursor& cursor = screen.cursor();
  out << screen.rows() << " by " << screen.columns() << (screen.showsAlternate() ? ", alternate screen" : "")
      << ", cursor " << cursor.row + 1 << ',' << cursor.column + 1 << (cursor.wrapsNext ? "+" : "")
      << (state.modes.cursorVisible ? "" : ", hidden") << ", history " << screen.scrollback().lineCount() << '\n';
  if (!state.title.empty()) out << "title: " << state.title << '\n';
  out << "modes:";
  for (const Mode& mode : modeTable()) {
    if (mode.set != nullptr && mode.isSet(state)) out << (mode.isPrivate ? " ?" : " ") << mode.number;
  }
  out << "\nreplies: " << visible(terminal.takeReplies()) << "\n\n";
  for (int row = 0; row < screen.rows(); ++row) {
    const RowInfo& rowState = screen.grid().state(row);
    std::string text;
    for (const Cell cell : screen.grid().row(row).first(rowState.extent)) {
      screen.tables().appendText(cell, text);
    }
    text.erase(text.find_last_not_of(' ') + 1);
    out << std::setw(2) << row + 1 << '|' << text << (rowState.wraps ? " \\" : "") << '\n';
  }
  out << '\n';
  for (int row = 0; row < screen.rows(); ++row) {
    describeStyles(screen, row, out);
  }
  return out.str();
}

}  // namespace zolt::vt::test
