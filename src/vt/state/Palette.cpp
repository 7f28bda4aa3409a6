#include "vt/state/Palette.h"

#include <charconv>
#include <cstdio>

namespace zolt::vt {

namespace {

constexpr std::array<Rgb, 16> kFirstColors{{
    {0x00, 0x00, 0x00},  // black
    {0xCD, 0x00, 0x00},  // red
    {0x00, 0xCD, 0x00},  // green
    {0xCD, 0xCD, 0x00},  // yellow
    {0x00, 0x00, 0xEE},  // blue
    {0xCD, 0x00, 0xCD},  // magenta
    {0x00, 0xCD, 0xCD},  // cyan
    {0xE5, 0xE5, 0xE5},  // white
    {0x7F, 0x7F, 0x7F},  // bright black
    {0xFF, 0x00, 0x00},  // bright red
    {0x00, 0xFF, 0x00},  // bright green
    {0xFF, 0xFF, 0x00},  // bright yellow
    {0x5C, 0x5C, 0xFF},  // bright blue
    {0xFF, 0x00, 0xFF},  // bright magenta
    {0x00, 0xFF, 0xFF},  // bright cyan
    {0xFF, 0xFF, 0xFF},  // bright white
}};
constexpr std::size_t kCubeBegin = 16;
constexpr std::size_t kGreysBegin = 232;
constexpr std::array<std::uint8_t, 6> kCubeLevels{0, 95, 135, 175, 215, 255};

// A component in hexadecimal, scaled to 8 bits.
std::optional<std::uint8_t> component(std::string_view digits) {
  if (digits.empty() || digits.size() > 4) return std::nullopt;
  unsigned value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, 16);
  if (error != std::errc{} || end != digits.data() + digits.size()) return std::nullopt;
  const unsigned max = (1U << (4 * digits.size())) - 1;
  return static_cast<std::uint8_t>((value * 255 + max / 2) / max);
}

std::optional<Rgb> fromComponents(std::string_view red, std::string_view green, std::string_view blue) {
  const auto r = component(red);
  const auto g = component(green);
  const auto b = component(blue);
  if (!r || !g || !b) return std::nullopt;
  return Rgb{*r, *g, *b};
}

}  // namespace

std::optional<Rgb> parseColor(std::string_view text) {
  if (text.starts_with('#')) {
    text.remove_prefix(1);
    const std::size_t digits = text.size() / 3;
    if (text.size() % 3 != 0 || digits == 0 || digits > 4) return std::nullopt;
    // Unlike "rgb:", "#rgb" gives the most significant bits.
    const auto high = [&](std::size_t index) {
      const std::string part = std::string(text.substr(index * digits, digits)) + (digits == 1 ? "0" : "");
      return part.substr(0, 2);
    };
    if (!fromComponents(text.substr(0, digits), text.substr(digits, digits), text.substr(2 * digits))) {
      return std::nullopt;
    }
    return fromComponents(high(0), high(1), high(2));
  }
  constexpr std::string_view kPrefix = "rgb:";
  if (!text.starts_with(kPrefix)) return std::nullopt;
  text.remove_prefix(kPrefix.size());
  const std::size_t first = text.find('/');
  const std::size_t second = first == std::string_view::npos ? first : text.find('/', first + 1);
  if (second == std::string_view::npos) return std::nullopt;
  return fromComponents(text.substr(0, first), text.substr(first + 1, second - first - 1), text.substr(second + 1));
}

std::string colorReport(const Rgb& color) {
  std::array<char, 32> text{};
  const int size = std::snprintf(text.data(), text.size(), "rgb:%02x%02x/%02x%02x/%02x%02x", color.red, color.red,
                                 color.green, color.green, color.blue, color.blue);
  return {text.data(), static_cast<std::size_t>(size)};
}

Palette::Palette() : m_roleDefaults{{{0xFF, 0xFF, 0xFF}, {0x00, 0x00, 0x00}, {0xFF, 0xFF, 0xFF}}} {
  for (std::size_t i = 0; i < indexedColors; ++i) {
    if (i < kCubeBegin) {
      m_indexedDefaults[i] = kFirstColors[i];
    } else if (i < kGreysBegin) {
      const std::size_t index = i - kCubeBegin;
      m_indexedDefaults[i] = {kCubeLevels[index / 36], kCubeLevels[index / 6 % 6], kCubeLevels[index % 6]};
    } else {
      const auto level = static_cast<std::uint8_t>(8 + 10 * (i - kGreysBegin));
      m_indexedDefaults[i] = {level, level, level};
    }
  }
  reset();
}

void Palette::reset() {
  m_indexed = m_indexedDefaults;
  m_roles = m_roleDefaults;
}

void Palette::setIndexedDefault(std::uint8_t index, const Rgb& color) {
  if (m_indexed[index] == m_indexedDefaults[index]) m_indexed[index] = color;
  m_indexedDefaults[index] = color;
}

void Palette::setRoleDefault(Role role, const Rgb& color) {
  const auto at = static_cast<std::size_t>(role);
  if (m_roles[at] == m_roleDefaults[at]) m_roles[at] = color;
  m_roleDefaults[at] = color;
}

}  // namespace zolt::vt
