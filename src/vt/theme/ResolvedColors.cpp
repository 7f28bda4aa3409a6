#include "vt/theme/ResolvedColors.h"

#include <algorithm>
#include <utility>

#include "vt/theme/Contrast.h"

namespace zolt::vt {

namespace {

constexpr double kFaintContrast = 3.0;
constexpr int kFirstBright = 8;

// The palette's colour or the direct one; nothing for the default.
std::optional<Rgb> colorOf(CellColor color, const Palette& palette) {
  switch (color.kind()) {
    case CellColor::Kind::Default:
      break;
    case CellColor::Kind::Indexed:
      return palette.indexed(color.index());
    case CellColor::Kind::Direct:
      return Rgb{color.red(), color.green(), color.blue()};
  }
  return std::nullopt;
}

CellColor brightened(CellColor color) {
  const bool hasBright = color.kind() == CellColor::Kind::Indexed && color.index() < kFirstBright;
  return hasBright ? CellColor::indexed(static_cast<std::uint8_t>(color.index() + kFirstBright)) : color;
}

std::uint8_t middle(std::uint8_t one, std::uint8_t other) {
  return static_cast<std::uint8_t>((one + other + 1) / 2);
}

Rgb faint(const Rgb& text, const Rgb& background) {
  const Rgb mixed{middle(text.red, background.red), middle(text.green, background.green),
                  middle(text.blue, background.blue)};
  // Not more contrast than without the attribute.
  return withContrast(mixed, background, std::min(kFaintContrast, contrastRatio(text, background)));
}

}  // namespace

const Rgb& groundColor(const Palette& palette, bool reverseScreen) {
  return palette.role(reverseScreen ? Palette::Role::Foreground : Palette::Role::Background);
}

ResolvedColors resolve(const Style& style, const Palette& palette, const ResolveOptions& options) {
  const auto has = [&](StyleFlag flag) { return (style.flags & flag) != 0; };
  const Rgb& ground = groundColor(palette, options.reverseScreen);
  const bool isBrightened = options.boldIsBright && has(kBold);
  Rgb text = colorOf(isBrightened ? brightened(style.foreground) : style.foreground, palette)
                 .value_or(groundColor(palette, !options.reverseScreen));
  std::optional<Rgb> background = colorOf(style.background, palette);
  if (has(kInverse)) background = std::exchange(text, background.value_or(ground));

  const Rgb& behind = background ? *background : ground;
  if (has(kHidden)) return {.foreground = behind, .background = background, .underline = behind};
  if (has(kFaint)) text = faint(text, behind);
  if (!options.isGraphic) text = withContrast(text, behind, options.minimumContrast);
  return {
      .foreground = text, .background = background, .underline = colorOf(style.underlineColor, palette).value_or(text)};
}

}  // namespace zolt::vt
