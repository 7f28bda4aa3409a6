#include "text/StyleCode.h"

#include <array>

namespace zolt {

namespace {

// By StyleCode::Opacity.
constexpr std::array kAlphas{0.0, 0.5, 1.0};

std::optional<StyleCode::Opacity> opacityOf(double alpha) {
  for (std::size_t i = 0; i < kAlphas.size(); ++i) {
    if (kAlphas[i] == alpha) return static_cast<StyleCode::Opacity>(i);
  }
  return std::nullopt;
}

}  // namespace

std::optional<StyleCode> StyleCode::of(const TextAttributes& attributes) {
  if (attributes.font.size != FontFace().size) return std::nullopt;
  const auto foreground = CompactColor::of(attributes.foreground);
  const auto opacity = opacityOf(attributes.foreground.alpha);
  if (!foreground || !opacity) return std::nullopt;
  Parts parts{.foreground = *foreground,
              .opacity = *opacity,
              .isBold = attributes.font.weight == FontWeight::Bold,
              .isItalic = attributes.font.slant == FontSlant::Italic,
              .isUnderlined = attributes.underline == Line::Single,
              .isStruck = attributes.strikethrough == Line::Single};
  if (attributes.background) {
    const auto background = CompactColor::of(*attributes.background);
    if (!background || attributes.background->alpha != 1.0) return std::nullopt;
    parts.background = *background;
    parts.hasBackground = true;
  }
  return StyleCode(parts);
}

TextAttributes StyleCode::attributes() const {
  TextAttributes attributes;
  const std::size_t opacity = m_bits >> kOpacity & 3;
  attributes.foreground = CompactColor::fromBits(m_bits).color(kAlphas[opacity < kAlphas.size() ? opacity : 0]);
  if (has(kHasBackground)) attributes.background = CompactColor::fromBits(m_bits >> kBackground).color();
  attributes.font.weight = has(kBold) ? FontWeight::Bold : FontWeight::Regular;
  attributes.font.slant = has(kItalic) ? FontSlant::Italic : FontSlant::Upright;
  attributes.underline = has(kUnderlined) ? Line::Single : Line::None;
  attributes.strikethrough = has(kStruck) ? Line::Single : Line::None;
  return attributes;
}

}  // namespace zolt
