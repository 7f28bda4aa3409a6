#include "vt/SequenceCase.h"

#include <algorithm>

#include "vt/cells/Sgr.h"

namespace zolt::vt::test {

namespace {

constexpr char kErasedWithAttributes = '~';

// Removes trailing blanks.
void trim(std::string& text) {
  const std::size_t last = text.find_last_not_of(' ');
  text.resize(last == std::string::npos ? 0 : last + 1);
}

void appendCell(const CellTables& tables, Cell cell, std::string& text) {
  if (cell.isErased() && cell.attributes() != 0) {
    text += kErasedWithAttributes;
  } else {
    tables.appendText(cell, text);
  }
}

}  // namespace

std::vector<const SequenceCase*> allCases() {
  std::vector<const SequenceCase*> all;
  for (const auto& family : {controlCases(), cursorCases(), editingCases(), rectangleCases(), renditionCases(),
                             modeCases(), reportCases(), settingCases(), stringCases()}) {
    for (const SequenceCase& each : family) {
      all.push_back(&each);
    }
  }
  return all;
}

std::vector<std::string_view> coveredNames(const SequenceCase& given) {
  constexpr std::string_view kSeparator = ", ";
  std::vector<std::string_view> names;
  for (std::string_view rest = given.covers;;) {
    const std::size_t end = rest.find(kSeparator);
    names.push_back(rest.substr(0, end));
    if (end == std::string_view::npos) return names;
    rest.remove_prefix(end + kSeparator.size());
  }
}

TerminalSettings readableSettings() {
  TerminalSettings settings;
  settings.allowTitleReports = true;
  settings.allowClipboardReads = true;
  settings.allowRectangleChecksums = true;
  return settings;
}

std::string screenText(const Terminal& terminal) {
  const Screen& screen = terminal.screen();
  std::string text;
  for (int row = 0; row < screen.rows(); ++row) {
    std::string line;
    for (const Cell cell : screen.grid().row(row)) {
      appendCell(screen.tables(), cell, line);
    }
    trim(line);
    text += line + '\n';
  }
  text.resize(text.find_last_not_of('\n') + 1);
  return text;
}

std::string cursorText(const Terminal& terminal) {
  const Cursor& cursor = terminal.screen().cursor();
  const bool wraps = cursor.wrapsNext && terminal.screen().modes.autoWrap;
  return std::to_string(cursor.row + 1) + ',' + std::to_string(cursor.column + 1) + (wraps ? "+" : "");
}

std::string firstRowRuns(const Terminal& terminal) {
  const Screen& screen = terminal.screen();
  const CellTables& tables = screen.tables();
  const auto row = screen.grid().row(0);
  const auto last = std::find_if(row.rbegin(), row.rend(), [](Cell cell) { return !cell.isBlank(); });
  const auto count = static_cast<std::size_t>(row.rend() - last);
  std::string text;
  for (std::size_t begin = 0, end = 0; begin < count; begin = end) {
    const Cell first = row[begin];
    text += '[' + renditionParameters(tables.styles[first.style()]) + ']';
    for (end = begin; end < count && row[end].attributes() == first.attributes(); ++end) {
      appendCell(tables, row[end], text);
    }
    if (first.isProtected()) text += '!';
    if (first.link() != 0) text += '<' + tables.links[first.link()].uri + '>';
  }
  return text;
}

}  // namespace zolt::vt::test
