#include "emulation/SGREncoder.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <optional>
#include <span>

#include "emulation/SGR.h"

namespace zolt {

namespace {

// The first code of each role of a colour.
constexpr std::int64_t kForeground = 30;
constexpr std::int64_t kBackground = 40;
constexpr std::int64_t kToBright = 60;
constexpr std::int64_t kToExtended = 8;

// Writes codes with semicolons between them.
class Codes {
 public:
  explicit Codes(std::string& out) : m_out(out) {}

  void add(std::int64_t code) {
    if (!m_first) m_out += ';';
    m_first = false;
    std::array<char, 20> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(), code);
    m_out.append(digits.data(), end);
  }

 private:
  std::string& m_out;
  bool m_first = true;
};

// A component in SGR's scale, where 255 is 1.0; it may lie outside.
std::int64_t in255ths(double component) {
  constexpr double kMax = 9007199254740992.0;  // 2^53
  return std::llround(std::clamp(component * 255.0, -kMax, kMax));
}

std::optional<std::int64_t> levelOfCube(std::int64_t component) {
  if (component == 0) return 0;
  if (component < 95 || component > 255 || (component - 55) % 40 != 0) return std::nullopt;
  return (component - 55) / 40;
}

// The index from 16 on of this colour among the 256; the named ones before are matched separately.
std::optional<std::int64_t> indexOf256(std::int64_t red, std::int64_t green, std::int64_t blue) {
  const auto r = levelOfCube(red);
  const auto g = levelOfCube(green);
  const auto b = levelOfCube(blue);
  if (r && g && b) return 16 + 36 * *r + 6 * *g + *b;
  const bool isGray = red == green && green == blue && red >= 8 && red <= 238 && (red - 8) % 10 == 0;
  return isGray ? std::optional(232 + (red - 8) / 10) : std::nullopt;
}

void addColor(Codes& codes, const Color& color, std::int64_t role) {
  const Color opaque = color.withAlpha(1);
  const auto add = [&](std::span<const Color> palette, std::int64_t first) {
    const auto found = std::ranges::find(palette, opaque);
    if (found == palette.end()) return false;
    codes.add(first + (found - palette.begin()));
    return true;
  };
  if (add(standardColors, role) || add(brightColors, role + kToBright)) return;
  const std::array components{in255ths(color.red), in255ths(color.green), in255ths(color.blue)};
  codes.add(role + kToExtended);
  if (const auto index = indexOf256(components[0], components[1], components[2])) {
    codes.add(5);
    codes.add(*index);
  } else {
    codes.add(2);
    std::ranges::for_each(components, [&](std::int64_t component) { codes.add(component); });
  }
}

void addColors(Codes& codes, const TextAttributes& style) {
  const double alpha = style.foreground.alpha;
  if (alpha == 0 && style.background) {
    codes.add(7);
    if (*style.background != Color::white) addColor(codes, *style.background, kForeground);
    return;
  }
  if (alpha == 0) {
    codes.add(8);
    return;
  }
  if (alpha < 1) codes.add(2);
  if (style.foreground.withAlpha(1) != Color::white) addColor(codes, style.foreground, kForeground);
  if (style.background) addColor(codes, *style.background, kBackground);
}

}  // namespace

void appendSGR(std::string& out, const TextAttributes& from, const TextAttributes& to) {
  if (from == to) return;
  out += "\x1b[";
  Codes codes(out);
  // Starts with a reset: SGR 22 cannot clear only one of bold and dim.
  if (from != TextAttributes{}) codes.add(0);
  if (to.font.weight == FontWeight::Bold) codes.add(1);
  if (to.font.slant == FontSlant::Italic) codes.add(3);
  if (to.underline == Line::Single) codes.add(4);
  if (to.strikethrough == Line::Single) codes.add(9);
  addColors(codes, to);
  out += 'm';
}

}  // namespace zolt
