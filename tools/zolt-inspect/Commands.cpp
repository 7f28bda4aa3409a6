#include "Commands.h"

#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <nlohmann/json.hpp>
#include <string_view>
#include <system_error>
#include <type_traits>
#include <variant>

#include "emulation/ANSIParser.h"
#include "emulation/TerminalScreenBuffer.h"
#include "session/ShellManager.h"
#include "settings/Config.h"
#include "text/GraphemeClusters.h"

namespace zolt::inspect {

namespace {

using Json = nlohmann::ordered_json;

// Reads up to `wanted` bytes; fewer only at the end of the input.
Result<std::string> readUpTo(int input, std::size_t wanted) {
  constexpr std::size_t kAtOnce = 256 * 1024;
  std::string bytes;
  while (bytes.size() < wanted) {
    const std::size_t before = bytes.size();
    bytes.resize(std::min(wanted, before + kAtOnce));
    const ssize_t got = read(input, bytes.data() + before, bytes.size() - before);
    bytes.resize(before + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
    if (got == 0) break;
    if (got < 0 && errno != EINTR) return Failure{"cannot read the input: " + std::generic_category().message(errno)};
  }
  return bytes;
}

// Like `forEachChunk`, but drops chunks that are not valid UTF-8, as the log display does.
template <class Take>
Result<void> forEachValidChunk(const Request& request, Take take) {
  return forEachChunk(request, [&](std::string_view chunk) {
    if (isValidUtf8(chunk)) take(chunk);
  });
}

Json encode(const Color& color) {
  return Json::array({color.red, color.green, color.blue, color.alpha});
}

Json encode(std::string_view text, const TextAttributes& attributes) {
  return {{"text", text},
          {"foreground", encode(attributes.foreground)},
          {"background", attributes.background ? encode(*attributes.background) : Json()},
          {"bold", attributes.font.weight == FontWeight::Bold},
          {"italic", attributes.font.slant == FontSlant::Italic},
          {"underline", attributes.underline == Line::Single},
          {"strikethrough", attributes.strikethrough == Line::Single},
          {"size", attributes.font.size}};
}

Result<int> parse(const Request& request, std::ostream& out) {
  if (!request.arguments.empty()) return Failure{"parse takes no arguments"};
  ANSIParser parser;
  const auto read = forEachValidChunk(request, [&](std::string_view chunk) {
    const AttributedString styled = parser.parse(chunk);
    std::string_view rest = styled.text();
    for (const AttributedString::Run& run : styled.runs()) {
      out << encode(rest.substr(0, run.length), styled.attributes(run)).dump() << '\n';
      rest.remove_prefix(run.length);
    }
  });
  if (!read) return Failure{read.reason()};
  return 0;
}

// A grid of this many cells fits in memory.
constexpr std::int64_t kLargestGridSide = 10'000;
constexpr std::int64_t kMaxCells = 4'000'000;

std::optional<std::int64_t> gridSide(const std::string& text) {
  std::int64_t side = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), side);
  if (error != std::errc{} || end != text.data() + text.size() || side < 1 || side > kLargestGridSide)
    return std::nullopt;
  return side;
}

Result<int> grid(const Request& request, std::ostream& out) {
  const auto size = gridSize(request, "grid");
  if (!size) return Failure{size.reason()};
  TerminalScreenBuffer buffer;
  buffer.resize(size.value().rows, size.value().columns);
  const auto read = forEachValidChunk(request, [&](std::string_view chunk) { buffer.parseAndRender(chunk); });
  if (!read) return Failure{read.reason()};
  const auto& cursor = buffer.cursorPosition;
  out << R"({"rows":)" << buffer.rows() << R"(,"cols":)" << buffer.cols() << R"(,"cursor":[)" << cursor.row << ','
      << cursor.col << R"(],"scrollback":)" << buffer.scrollbackBuffer().size() << R"(,"cells":[)";
  // Row by row: a JSON tree of all cells would be many times the size of the grid.
  const char* separator = "";
  for (const TerminalScreenBuffer::Row& row : buffer.cells()) {
    Json line = Json::array();
    for (const TerminalCell& cell : row) {
      line.push_back(cell.character);
    }
    out << std::exchange(separator, ",") << line.dump();
  }
  out << "]}\n";
  return 0;
}

Result<int> shells(const Request& request, std::ostream& out) {
  if (!request.arguments.empty()) return Failure{"shells takes no arguments"};
  const ShellManager& manager = ShellManager::shared();
  // A shell's own encoding fixes the order of its keys, so it is inserted verbatim.
  out << R"({"availableShells":[)";
  const char* separator = "";
  for (const Shell& shell : manager.availableShells()) {
    out << std::exchange(separator, ",") << shell.encoded();
  }
  out << R"(],"defaultShell":)" << manager.defaultShell().encoded() << "}\n";
  return 0;
}

// A case by its raw value, any other setting as it is.
template <class T>
Json jsonOf(const T& value) {
  if constexpr (std::is_enum_v<T>) {
    return rawValue(value);
  } else {
    return value;
  }
}

Result<int> defaults(const Request& request, std::ostream& out) {
  if (!request.arguments.empty()) return Failure{"defaults takes no arguments"};
  Config& config = Config::shared();
  config.setupDefaults();
  const UserDefaults& stored = UserDefaults::standard();
  Json settings;
  for (const Config::Setting& each : config.settings()) {
    std::visit([&](const auto* setting) { settings[setting->row().key] = jsonOf(setting->value()); }, each);
  }
  for (const BoundText& each : {kStartupShell, kStartupCommand, kSelectedTheme}) {
    settings[each.key] = stored.stringForKey(each.key).value_or(each.absent);
  }
  out << settings.dump(-1, ' ', false, Json::error_handler_t::replace) << '\n';
  return 0;
}

}  // namespace

Result<void> forEachChunk(const Request& request, const std::function<void(std::string_view)>& take) {
  const std::size_t wanted = request.chunkBytes.value_or(std::string().max_size());
  while (true) {
    const auto chunk = readUpTo(request.input, wanted);
    if (!chunk) return Failure{chunk.reason()};
    take(chunk.value());
    if (chunk.value().size() < wanted) return {};
  }
}

Result<TerminalSize> gridSize(const Request& request, const std::string& command) {
  const auto rows = request.arguments.size() == 2 ? gridSide(request.arguments[0]) : std::nullopt;
  const auto cols = request.arguments.size() == 2 ? gridSide(request.arguments[1]) : std::nullopt;
  if (!rows || !cols || *rows * *cols > kMaxCells) {
    return Failure{command + " needs ROWS and COLS, each from 1 to " + std::to_string(kLargestGridSide) + ", " +
                   std::to_string(kMaxCells) + " cells at most"};
  }
  return TerminalSize{.rows = static_cast<int>(*rows), .columns = static_cast<int>(*cols)};
}

const std::vector<Command>& commands() {
  static const std::vector<Command> list{
      {"parse", "", "the styled runs that the log display makes of standard input, one per line", kChunk, parse},
      {"grid", "ROWS COLS", "the character grid after standard input", kChunk, grid},
      {"vt", "ROWS COLS", "the full emulation's screen after standard input", kChunk | kFull, vt},
      {"host", "ROWS COLS -- PROGRAM", "the same after a program has run in it; input goes to the program",
       kFull | kRectangleChecksums | kProgram, host},
      {"shells", "", "the shells of this machine, and the default", kNoOption, shells},
      {"defaults", "", "the settings as loaded", kNoOption, defaults},
  };
  return list;
}

}  // namespace zolt::inspect
