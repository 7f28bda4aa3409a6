#include "TerminalJson.h"

#include <sodium.h>

#include <nlohmann/json.hpp>
#include <span>
#include <string>

#include "Commands.h"
#include "vt/cells/Sgr.h"
#include "vt/functions/Modes.h"

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

// The cells of a row, without trailing blanks.
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

// Without trailing erased cells.
Json screenOf(const vt::Screen& screen) {
  Json rows = Json::array();
  for (int row = 0; row < screen.rows(); ++row) {
    rows.push_back(textOf(written(screen.grid(), row), screen.tables()));
  }
  return rows;
}

// "?25" for a DEC private mode, "4" for an ANSI mode.
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

// The columns up to the last one with attributes or a character.
Json runsOf(const vt::Screen& screen, int row) {
  Json runs = Json::array();
  const vt::CellTables& tables = screen.tables();
  const auto cells = screen.grid().row(row).first(screen.grid().state(row).extent);
  for (std::size_t begin = 0; begin < cells.size();) {
    std::size_t end = begin + 1;
    while (end < cells.size() && cells[end].attributes() == cells[begin].attributes()) {
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

Json markOf(HistoryMarkKind kind, std::int64_t at, std::int32_t status) {
  Json mark{{"kind", nameOf(kind)}, {"at", at}};
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
    Json json{{"runs", runsOf(screen, row)}};
    if (screen.grid().state(row).wraps) json["wraps"] = true;
    if (!marks.empty()) json["marks"] = marks;
    rows.push_back(std::move(json));
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
    Json json{{"text", std::move(line.text)}, {"runs", std::move(runs)}};
    if (!line.isEnded) json["goesOn"] = true;
    for (const HistoryMark& mark : line.marks) {
      json["marks"].push_back(markOf(mark.kind, mark.offset, mark.exitStatus));
    }
    lines.push_back(std::move(json));
  });
  return lines;
}

}  // namespace

void printTerminal(const vt::Terminal& terminal, std::string_view replies, bool full, std::ostream& out) {
  const vt::TerminalState& state = terminal.state();
  const vt::Screen& screen = terminal.screen();
  const vt::Cursor& cursor = screen.cursor();
  Json json{{"rows", screen.rows()},     {"cols", screen.columns()}, {"cursor", {cursor.row, cursor.column}},
            {"title", state.title},      {"modes", modesOf(state)},  {"replies", base64(replies)},
            {"screen", screenOf(screen)}};
  if (full) {
    json["iconTitle"] = state.iconTitle;
    json["alternate"] = screen.showsAlternate();
    json["workingDirectory"] = state.workingDirectory;
    json["styled"] = rowsOf(screen);
    json["scrollback"] = scrollbackOf(screen);
  }
  out << json.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
}

Result<int> vt(const Request& request, std::ostream& out) {
  const auto size = gridSize(request, "vt");
  if (!size) return Failure{size.reason()};
  vt::TerminalSettings settings;
  settings.version = ZOLT_VERSION;
  vt::Terminal terminal(size.value(), settings);
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
