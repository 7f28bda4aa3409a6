#include "emulation/Rendition.h"

#include <array>
#include <optional>
#include <utility>

#include "emulation/SGR.h"

namespace zolt {

namespace {

using Flag = bool Rendition::*;

// What one code does: sets up to two flags to a value. Colours and the reset are handled beside the table.
struct FlagRule {
  std::int64_t code;
  Flag flag;
  bool value;
};

constexpr std::array kFlagRules{
    FlagRule{1, &Rendition::isBold, true},          FlagRule{2, &Rendition::isDim, true},
    FlagRule{3, &Rendition::isItalic, true},        FlagRule{4, &Rendition::isUnderline, true},
    FlagRule{7, &Rendition::isReverse, true},       FlagRule{8, &Rendition::isHidden, true},
    FlagRule{9, &Rendition::isStrikethrough, true}, FlagRule{22, &Rendition::isBold, false},
    FlagRule{22, &Rendition::isDim, false},         FlagRule{23, &Rendition::isItalic, false},
    FlagRule{24, &Rendition::isUnderline, false},   FlagRule{27, &Rendition::isReverse, false},
    FlagRule{28, &Rendition::isHidden, false},      FlagRule{29, &Rendition::isStrikethrough, false},
};

struct ExtendedColor {
  Color color;
  std::size_t codesUsed;  // after the 38 or 48 itself
};

// `codes` are those after the 38 or 48.
std::optional<ExtendedColor> extendedColor(std::span<const std::int64_t> codes) {
  if (codes.size() >= 2 && codes[0] == 5) return ExtendedColor{color256(codes[1]), 2};
  if (codes.size() >= 4 && codes[0] == 2) {
    const auto component = [](std::int64_t code) { return static_cast<double>(code) / 255.0; };
    return ExtendedColor{{component(codes[1]), component(codes[2]), component(codes[3]), 1.0}, 4};
  }
  return std::nullopt;
}

// The palette colour that `code` names in the range of eight that starts at `first`.
const Color* paletteColor(std::int64_t code, std::int64_t first, const std::array<Color, 8>& palette) {
  return code >= first && code < first + 8 ? &palette[static_cast<std::size_t>(code - first)] : nullptr;
}

}  // namespace

void Rendition::apply(std::span<const std::int64_t> codes) {
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const std::int64_t code = codes[i];
    if (code == 0) {
      *this = Rendition{};
    } else if (code < 30) {
      for (const FlagRule& rule : kFlagRules) {
        if (rule.code == code) this->*rule.flag = rule.value;
      }
    } else if (code == 38 || code == 48) {
      if (const auto extended = extendedColor(codes.subspan(i + 1))) {
        (code == 38 ? currentForeground : currentBackground) = extended->color;
        i += extended->codesUsed;
      }
    } else if (code == 39) {
      currentForeground = Color::white;
    } else if (code == 49) {
      currentBackground = Color::clear;
    } else if (const Color* foreground = paletteColor(code, 30, standardColors)) {
      currentForeground = *foreground;
    } else if (const Color* background = paletteColor(code, 40, standardColors)) {
      currentBackground = *background;
    } else if (const Color* brightForeground = paletteColor(code, 90, brightColors)) {
      currentForeground = *brightForeground;
    } else if (const Color* brightBackground = paletteColor(code, 100, brightColors)) {
      currentBackground = *brightBackground;
    }
  }
}

TextAttributes Rendition::attributes() const {
  Color foreground = currentForeground;
  Color background = currentBackground;
  if (isReverse) std::swap(foreground, background);
  if (isHidden) {
    foreground = Color::clear;
  } else if (isDim) {
    foreground = foreground.withAlpha(0.5);
  }
  TextAttributes attributes;
  attributes.font.weight = isBold ? FontWeight::Bold : FontWeight::Regular;
  attributes.font.slant = isItalic ? FontSlant::Italic : FontSlant::Upright;
  attributes.foreground = foreground;
  if (background != Color::clear) attributes.background = background;
  attributes.underline = isUnderline ? Line::Single : Line::None;
  attributes.strikethrough = isStrikethrough ? Line::Single : Line::None;
  return attributes;
}

}  // namespace zolt
