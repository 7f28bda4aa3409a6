#include "TerminalJson.h"

#include <sodium.h>

#include <nlohmann/json.hpp>
#include <span>
#include <string>

#include "Commands.h"
#include "vt/Modes.h"
#include "vt/SgrSequence.h"

namespace zolt::inspect {

namespace {

using Json = nlohmann::ordered_json;

std::string base64(std::string_view bytes) {
  std::string text(sodium_base64_encoded_len(bytes.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
  sodium_bin2base64(text.data(), text.size(), reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size(),
                    sodium_base64_VARIANT_ORIGINAL);
  text.pop_back();  // the terminating NUL
  return text;
}

// The cells of a row up to the last that is not blank.
std::span<const vt::Cell> written(const vt::Grid& grid, int row) {
  std::span<const vt::Cell> cells = grid.row(row).first(grid.state(row).extent);
  while (!cells.empty() && cells.back().isErased()) {
    cells = cells.first(cells.size() - 1);
  }
  return cells;
}

std::string textOf(std::span<const vt::Cell> cells, const vt::CellTables& tables) {
  std::string text;
  for (const vt::Cell cell : cells) {
    tables.appendText(cell, text);
  }
  return text;
}

// Rows end where nothing more was written.
Json screenOf(const vt::Screen& screen) {
  Json rows = Json::array();
  for (int row = 0; row < screen.rows(); ++row) {
    rows.push_back(textOf(written(screen.grid(), row), screen.tables()));
  }
  return rows;
}

// "?25" for a private mode, "4" for one of ANSI.
Json modesOf(const vt::TerminalState& state) {
  Json set = Json::array();
  for (const vt::Mode& mode : vt::modeTable()) {
    if (mode.set == nullptr || !mode.isSet(state)) continue;
    std::string name = mode.isPrivate ? "?" : "";
    name += std::to_string(mode.number);
    set.push_back(std::move(name));
  }
  return set;
}

Json runOf(std::string text, const vt::Style& style, const vt::LinkTarget& link, bool isProtected) {
  Json run{{"text", std::move(text)}, {"sgr", vt::renditionParameters(style)}};
  if (!link.uri.empty()) run["link"] = link.uri;
  if (!link.id.empty()) run["linkId"] = link.id;
  if (isProtected) run["protected"] = true;
  return run;
}

// All columns up to the last one with a look or a character.
Json runsOf(const vt::Screen& screen, int row) {
  Json runs = Json::array();
  const vt::CellTables& tables = screen.tables();
  const auto cells = screen.grid().row(row).first(screen.grid().state(row).extent);
  for (std::size_t begin = 0; begin < cells.size();) {
    std::size_t end = begin + 1;
    while (end < cells.size() && cells[end].look() == cells[begin].look()) {
      ++end;
    }
    const vt::Cell first = cells[begin];
    runs.push_back(runOf(textOf(cells.subspan(begin, end - begin), tables), tables.styles[first.style()],
                         tables.links[first.link()], first.isProtected()));
    begin = end;
  }
  return runs;
}

const char* nameOf(HistoryMarkKind kind) {
  constexpr const char* kNames[] = {"prompt", "command", "output", "end"};
  return kNames[static_cast<std::size_t>(kind)];
}

Json markOf(HistoryMarkKind kind, std::int64_t place, std::int32_t status) {
  Json mark{{"kind", nameOf(kind)}, {"at", place}};
  if (kind == HistoryMarkKind::CommandEnd) mark["status"] = status;
  return mark;
}

Json rowsOf(const vt::Screen& screen) {
  Json rows = Json::array();
  for (int row = 0; row < screen.rows(); ++row) {
    Json marks = Json::array();
    for (const vt::RowMark& mark : screen.grid().marks(row)) {
      marks.push_back(markOf(mark.kind, mark.column, mark.exitStatus));
    }
    Json told{{"runs", runsOf(screen, row)}};
    if (screen.grid().state(row).wraps) told["wraps"] = true;
    if (!marks.empty()) told["marks"] = marks;
    rows.push_back(std::move(told));
  }
  return rows;
}

Json scrollbackOf(const vt::Screen& screen) {
  Json lines = Json::array();
  screen.scrollback().forEachLine([&](vt::HistoryLine&& line) {
    Json runs = Json::array();
    std::size_t at = 0;
    for (const vt::HistoryLine::Run& run : line.runs) {
      runs.push_back(runOf(line.text.substr(at, run.length), run.style, run.link, false));
      at += run.length;
    }
    Json told{{"text", std::move(line.text)}, {"runs", std::move(runs)}};
    if (!line.isEnded) told["goesOn"] = true;
    for (const HistoryMark& mark : line.marks) {
      told["marks"].push_back(markOf(mark.kind, mark.offset, mark.exitStatus));
    }
    lines.push_back(std::move(told));
  });
  return lines;
}

}  // namespace

void printTerminal(const vt::Terminal& terminal, std::string_view replies, bool full, std::ostream& out) {
  const vt::TerminalState& state = terminal.state();
  const vt::Screen& screen = terminal.screen();
  const vt::Cursor& cursor = screen.cursor();
  Json told{{"rows", screen.rows()},     {"cols", screen.columns()}, {"cursor", {cursor.row, cursor.column}},
            {"title", state.title},      {"modes", modesOf(state)},  {"replies", base64(replies)},
            {"screen", screenOf(screen)}};
  if (full) {
    told["iconTitle"] = state.iconTitle;
    told["alternate"] = screen.showsAlternate();
    told["workingDirectory"] = state.workingDirectory;
    told["styled"] = rowsOf(screen);
    told["scrollback"] = scrollbackOf(screen);
  }
  out << told.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

Result<int> vt(const Request& request, std::ostream& out) {
  const auto size = gridSize(request, "vt");
  if (!size) return Failure{size.reason()};
  vt::TerminalSettings settings;
  settings.version = ZOLT_VERSION;
  vt::Terminal terminal(size.value().rows, size.value().columns, settings);
  std::string replies;
  const auto read = forEachChunk(request, [&](std::string_view chunk) {
    terminal.feed(chunk);
    replies += terminal.takeReplies();
  });
  if (!read) return Failure{read.reason()};
  printTerminal(terminal, replies, request.full, out);
  return 0;
}

}  // namespace zolt::inspect
