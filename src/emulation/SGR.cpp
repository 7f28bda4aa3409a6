#include "emulation/SGR.h"

#include <charconv>

#include "base/CheckedMath.h"
#include "text/GraphemeClusters.h"
#include "text/TextScan.h"

namespace zolt {

const std::array<Color, 8> standardColors{{
    {0.0, 0.0, 0.0, 1.0},
    {0.8, 0.0, 0.0, 1.0},
    {0.0, 0.8, 0.0, 1.0},
    {0.8, 0.8, 0.0, 1.0},
    {0.0, 0.0, 0.8, 1.0},
    {0.8, 0.0, 0.8, 1.0},
    {0.0, 0.8, 0.8, 1.0},
    {0.75, 0.75, 0.75, 1.0},
}};

const std::array<Color, 8> brightColors{{
    {0.5, 0.5, 0.5, 1.0},
    {1.0, 0.33, 0.33, 1.0},
    {0.33, 1.0, 0.33, 1.0},
    {1.0, 1.0, 0.33, 1.0},
    {0.33, 0.33, 1.0, 1.0},
    {1.0, 0.33, 1.0, 1.0},
    {0.33, 1.0, 1.0, 1.0},
    {1.0, 1.0, 1.0, 1.0},
}};

Color color256(std::int64_t n) {
  precondition(n >= 0, "negative index into the 256-colour palette");
  if (n < 8) return standardColors[static_cast<std::size_t>(n)];
  if (n < 16) return brightColors[static_cast<std::size_t>(n - 8)];
  if (n >= 232) return Color::gray(static_cast<double>(checkedAdd(checkedMultiply(n - 232, 10), 8)) / 255.0);
  const std::int64_t k = n - 16;
  const auto component = [](std::int64_t level) {
    return level == 0 ? 0.0 : static_cast<double>(level * 40 + 55) / 255.0;
  };
  return {component(k / 36), component((k / 6) % 6), component(k % 6), 1.0};
}

namespace {

void appendCode(std::string_view field, std::vector<std::int64_t>& codes) {
  if (field.empty()) return;
  // A plus sign is part of a signed number here; from_chars accepts only the minus. "+-1" must not pass for one.
  if (field.front() == '+') {
    field.remove_prefix(1);
    if (field.empty() || field.front() == '-') return;
  }
  std::int64_t code = 0;
  const auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), code);
  if (error == std::errc{} && end == field.data() + field.size()) codes.push_back(code);
}

// A semicolon, or a character that is canonically equivalent to it (U+037E).
bool isSemicolon(std::string_view cluster) {
  const ComposedStart start = composedStart(cluster);
  return start.first == U';' && start.alone;
}

}  // namespace

void parseSGRCodes(std::string_view params, std::vector<std::int64_t>& codes) {
  if (params.empty()) {
    codes.push_back(0);
    return;
  }
  bool ascii = true;
  for (const char c : params) {
    ascii = ascii && static_cast<unsigned char>(c) < 0x80;
  }
  std::size_t fieldStart = 0;
  for (std::size_t position = 0; position < params.size();) {
    const std::size_t end = ascii ? position + 1 : clusterEnd(params, position);
    const std::string_view cluster = params.substr(position, end - position);
    if (ascii ? params[position] == ';' : isSemicolon(cluster)) {
      appendCode(params.substr(fieldStart, position - fieldStart), codes);
      fieldStart = end;
    }
    position = end;
  }
  appendCode(params.substr(fieldStart), codes);
}

}  // namespace zolt
