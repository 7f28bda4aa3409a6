#include "vt/cells/Sgr.h"

#include <algorithm>
#include <array>
#include <optional>

namespace zolt::vt {

namespace {

template <StyleFlag flag>
constexpr auto kSet = [](Style& style, int) { style.flags = static_cast<std::uint16_t>(style.flags | flag); };
template <int flags>
constexpr auto kReset = [](Style& style, int) { style.flags = static_cast<std::uint16_t>(style.flags & ~flags); };
template <CellColor Style::*color, int first, int base>
constexpr auto kColor = [](Style& style, int number) {
  style.*color = CellColor::indexed(static_cast<std::uint8_t>(number - first + base));
};
template <CellColor Style::*color>
constexpr auto kDefault = [](Style& style, int) { style.*color = CellColor(); };
template <Underline underline>
constexpr auto kUnderline = [](Style& style, int) { style.underline = underline; };

constexpr auto kPlain = [](Style& style, int) { style = {}; };

// clang-format off
constexpr Rendition kRenditions[] = {
    {0,   0,   kPlain,                            {"CSI 0 m",                "SGR 0",   "ECMA-48", "Resets all renditions and colours."}},
    {1,   1,   kSet<kBold>,                       {"CSI 1 m",                "SGR 1",   "ECMA-48", "Bold."}},
    {2,   2,   kSet<kFaint>,                      {"CSI 2 m",                "SGR 2",   "ECMA-48", "Faint."}},
    {3,   3,   kSet<kItalic>,                     {"CSI 3 m",                "SGR 3",   "ECMA-48", "Italic."}},
    {4,   4,   kUnderline<Underline::Single>,     {"CSI 4 m",                "SGR 4",   "ECMA-48", "Underlined."}},
    {5,   5,   kSet<kBlink>,                      {"CSI 5 m",                "SGR 5",   "ECMA-48", "Blinking."}},
    {6,   6,   kSet<kRapidBlink>,                 {"CSI 6 m",                "SGR 6",   "ECMA-48", "Blinking rapidly."}},
    {7,   7,   kSet<kInverse>,                    {"CSI 7 m",                "SGR 7",   "ECMA-48", "Inverse."}},
    {8,   8,   kSet<kHidden>,                     {"CSI 8 m",                "SGR 8",   "ECMA-48", "Hidden."}},
    {9,   9,   kSet<kStruck>,                     {"CSI 9 m",                "SGR 9",   "ECMA-48", "Struck through."}},
    {21,  21,  kUnderline<Underline::Double>,     {"CSI 21 m",               "SGR 21",  "ECMA-48", "Doubly underlined."}},
    {22,  22,  kReset<kBold | kFaint>,            {"CSI 22 m",               "SGR 22",  "ECMA-48", "Neither bold nor faint."}},
    {23,  23,  kReset<kItalic>,                   {"CSI 23 m",               "SGR 23",  "ECMA-48", "Not italic."}},
    {24,  24,  kUnderline<Underline::None>,       {"CSI 24 m",               "SGR 24",  "ECMA-48", "Not underlined."}},
    {25,  25,  kReset<kBlink | kRapidBlink>,      {"CSI 25 m",               "SGR 25",  "ECMA-48", "Not blinking."}},
    {27,  27,  kReset<kInverse>,                  {"CSI 27 m",               "SGR 27",  "ECMA-48", "Not inverse."}},
    {28,  28,  kReset<kHidden>,                   {"CSI 28 m",               "SGR 28",  "ECMA-48", "Not hidden."}},
    {29,  29,  kReset<kStruck>,                   {"CSI 29 m",               "SGR 29",  "ECMA-48", "Not struck through."}},
    {30,  37,  kColor<&Style::foreground, 30, 0>, {"CSI 30 m to CSI 37 m",   "SGR 30",  "ECMA-48", "Foreground, one of the first 8 colours."}},
    {39,  39,  kDefault<&Style::foreground>,      {"CSI 39 m",               "SGR 39",  "ECMA-48", "Default foreground."}},
    {40,  47,  kColor<&Style::background, 40, 0>, {"CSI 40 m to CSI 47 m",   "SGR 40",  "ECMA-48", "Background, one of the first 8 colours."}},
    {49,  49,  kDefault<&Style::background>,      {"CSI 49 m",               "SGR 49",  "ECMA-48", "Default background."}},
    {53,  53,  kSet<kOverlined>,                  {"CSI 53 m",               "SGR 53",  "ECMA-48", "Overlined."}},
    {55,  55,  kReset<kOverlined>,                {"CSI 55 m",               "SGR 55",  "ECMA-48", "Not overlined."}},
    {59,  59,  kDefault<&Style::underlineColor>,  {"CSI 59 m",               "SGR 59",  "kitty",   "Underline in the foreground colour."}},
    {90,  97,  kColor<&Style::foreground, 90, 8>, {"CSI 90 m to CSI 97 m",   "SGR 90",  "aixterm", "Foreground, one of the 8 bright colours."}},
    {100, 107, kColor<&Style::background, 100, 8>, {"CSI 100 m to CSI 107 m", "SGR 100", "aixterm", "Background, one of the 8 bright colours."}},
};

constexpr Documented kLongRenditions[] = {
    {"CSI 4 : Ps m",                         "SGR 4:x", "kitty",      "Underline: none, single, double, curly, dotted, dashed (0 to 5)."},
    {"CSI 38 ; 5 ; Ps m, CSI 38 : 5 : Ps m", "SGR 38",  "ISO 8613-6", "Foreground, one of 256 colours; with 2, a direct colour as red, green, blue."},
    {"CSI 48 ; 5 ; Ps m, CSI 48 : 5 : Ps m", "SGR 48",  "ISO 8613-6", "Background, like 38."},
    {"CSI 58 ; 5 ; Ps m, CSI 58 : 5 : Ps m", "SGR 58",  "kitty",      "Underline colour, like 38."},
};
// clang-format on

struct LongColor {
  int number;
  CellColor Style::*color;
};
constexpr LongColor kLongColors[] = {{38, &Style::foreground}, {48, &Style::background}, {58, &Style::underlineColor}};

std::optional<std::uint8_t> byteOf(std::int32_t value) {
  if (value == Parameter::omitted) return std::uint8_t{0};
  if (value > 255) return std::nullopt;
  return static_cast<std::uint8_t>(value);
}

// The colour given by the parameters after 38, 48 or 58. A direct colour in the colon form may begin with a colour
// space ID, which is ignored.
std::optional<CellColor> colorOf(std::span<const Parameter> values, bool isColonForm) {
  if (values.empty()) return std::nullopt;
  const std::int32_t kind = values[0].value;
  if (kind == 5 && values.size() >= 2) {
    const auto index = byteOf(values[1].value);
    return index ? std::optional(CellColor::indexed(*index)) : std::nullopt;
  }
  if (kind != 2) return std::nullopt;
  const std::size_t first = isColonForm && values.size() >= 5 ? 2 : 1;
  if (values.size() < first + 3) return std::nullopt;
  const auto red = byteOf(values[first].value);
  const auto green = byteOf(values[first + 1].value);
  const auto blue = byteOf(values[first + 2].value);
  if (!red || !green || !blue) return std::nullopt;
  return CellColor::direct(*red, *green, *blue);
}

// Rows by number, because coloured output has SGR before every other word.
constexpr std::size_t kNumbers = 108;
constexpr auto kByNumber = [] {
  std::array<std::uint8_t, kNumbers> rows{};
  rows.fill(UINT8_MAX);
  for (std::uint8_t row = 0; row < std::size(kRenditions); ++row) {
    for (int number = kRenditions[row].first; number <= kRenditions[row].last; ++number) {
      rows[static_cast<std::size_t>(number)] = row;
    }
  }
  return rows;
}();

const Rendition* renditionOf(std::int32_t number) {
  if (static_cast<std::size_t>(number) >= kNumbers) return nullptr;
  const std::uint8_t row = kByNumber[static_cast<std::size_t>(number)];
  return row == UINT8_MAX ? nullptr : &kRenditions[row];
}

void appendColor(std::string& out, int number, CellColor color) {
  if (color.kind() == CellColor::Kind::Default) return;
  out += ';' + std::to_string(number);
  if (color.kind() == CellColor::Kind::Indexed) {
    out += ":5:" + std::to_string(color.index());
    return;
  }
  out +=
      ":2::" + std::to_string(color.red()) + ':' + std::to_string(color.green()) + ':' + std::to_string(color.blue());
}

// In the short form (30 to 37, 90 to 97) if there is one.
void appendShortColor(std::string& out, int base, int brightBase, int longNumber, CellColor color) {
  if (color.kind() == CellColor::Kind::Indexed && color.index() < 16) {
    const int number = color.index() < 8 ? base + color.index() : brightBase + color.index() - 8;
    out += ';' + std::to_string(number);
    return;
  }
  appendColor(out, longNumber, color);
}

}  // namespace

std::span<const Rendition> renditionTable() {
  return kRenditions;
}

std::span<const Documented> longRenditions() {
  return kLongRenditions;
}

void applyRenditions(const ControlSequence& sequence, std::size_t begin, Style& style) {
  const std::span<const Parameter> all = std::span(sequence.parameters).first(sequence.parameterCount);
  if (begin >= all.size()) {
    style = {};
    return;
  }
  for (std::size_t i = begin; i < all.size();) {
    const std::int32_t number = std::max(all[i].value, 0);
    std::size_t end = i + 1;
    const bool standsAlone = end == all.size() || !all[end].isSub;
    if (const Rendition* const rendition = standsAlone ? renditionOf(number) : nullptr) {
      rendition->apply(style, number);
      i = end;
      continue;
    }
    while (end < all.size() && all[end].isSub) {
      ++end;
    }
    const std::span<const Parameter> subs = all.subspan(i + 1, end - i - 1);
    const auto* const longColor = std::ranges::find(kLongColors, number, &LongColor::number);
    if (longColor != std::end(kLongColors)) {
      const bool isColonForm = !subs.empty();
      const std::span<const Parameter> values = isColonForm ? subs : all.subspan(i + 1);
      if (const auto color = colorOf(values, isColonForm)) style.*(longColor->color) = *color;
      // In the semicolon form the colour takes up ordinary parameters.
      const std::int32_t kind = values.empty() ? 0 : values[0].value;
      const std::size_t taken = kind == 2 ? 4 : kind == 5 ? 2 : 1;
      if (!isColonForm) end = std::min(all.size(), i + 1 + taken);
    } else if (number == 4 && !subs.empty()) {
      const std::int32_t form = std::max(subs[0].value, 0);
      if (form <= 5) style.underline = static_cast<Underline>(form);
    }
    i = end;
  }
}

std::string renditionParameters(const Style& style) {
  constexpr struct {
    StyleFlag flag;
    const char* number;
  } kFlags[] = {
      // clang-format off
      {kBold,       ";1"},
      {kFaint,      ";2"},
      {kItalic,     ";3"},
      {kBlink,      ";5"},
      {kRapidBlink, ";6"},
      {kInverse,    ";7"},
      {kHidden,     ";8"},
      {kStruck,     ";9"},
      {kOverlined,  ";53"},
      // clang-format on
  };
  std::string out = "0";
  for (const auto& [flag, number] : kFlags) {
    if ((style.flags & flag) != 0) out += number;
  }
  if (style.underline == Underline::Single) out += ";4";
  if (style.underline > Underline::Single) out += ";4:" + std::to_string(static_cast<int>(style.underline));
  appendShortColor(out, 30, 90, 38, style.foreground);
  appendShortColor(out, 40, 100, 48, style.background);
  appendColor(out, 58, style.underlineColor);
  return out;
}

}  // namespace zolt::vt
