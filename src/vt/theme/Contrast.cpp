#include "vt/theme/Contrast.h"

#include <algorithm>
#include <cmath>

namespace zolt::vt {

namespace {

using Curve = std::array<double, 256>;

// The luminance of white over that of black; the flare that WCAG adds to both.
constexpr double kFlare = 0.05;

constexpr Rgb kBlack{};
constexpr Rgb kWhite{0xFF, 0xFF, 0xFF};

// A component's share of light for each of its values. The threshold is that of IEC 61966-2-1; WCAG's differs without
// effect for 8 bits.
Curve makeCurve() {
  Curve curve{};
  for (std::size_t i = 0; i < curve.size(); ++i) {
    const double value = static_cast<double>(i) / 255;
    curve[i] = value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
  }
  return curve;
}

const Curve& curve() {
  static const Curve values = makeCurve();
  return values;
}

// Linear light, 0...1 per component.
struct Light {
  double red = 0;
  double green = 0;
  double blue = 0;

  double luminance() const { return 0.2126 * red + 0.7152 * green + 0.0722 * blue; }
  double strongest() const { return std::max({red, green, blue}); }
  Light scaled(double factor) const { return {red * factor, green * factor, blue * factor}; }
  Light paler(double share) const {
    return {red + (1 - red) * share, green + (1 - green) * share, blue + (1 - blue) * share};
  }
};

Light lightOf(const Rgb& color) {
  return {curve()[color.red], curve()[color.green], curve()[color.blue]};
}

double luminance(const Rgb& color) {
  return lightOf(color).luminance();
}

// The least component with at least this light, and the greatest with at most this light: after rounding, a colour is
// still as light or as dark as it was to be.
std::uint8_t roundedUp(double light) {
  const auto at = std::lower_bound(curve().begin(), curve().end() - 1, light);
  return static_cast<std::uint8_t>(at - curve().begin());
}

std::uint8_t roundedDown(double light) {
  const auto after = std::upper_bound(curve().begin() + 1, curve().end(), light);
  return static_cast<std::uint8_t>(after - curve().begin() - 1);
}

// Without a hue worth keeping.
bool isGrey(const Rgb& color) {
  constexpr int kMostChroma = 0x20;
  const auto [least, most] = std::minmax({color.red, color.green, color.blue});
  return most - least < kMostChroma;
}

// `wanted` is at least the colour's luminance and at most 1.
Rgb lighter(const Rgb& color, double wanted) {
  // Black has no hue: it becomes a grey.
  Light light = color == kBlack ? Light{wanted, wanted, wanted} : lightOf(color);
  light = light.scaled(std::min(wanted / light.luminance(), 1 / light.strongest()));
  if (const double reached = light.luminance(); reached < wanted) {
    light = light.paler((wanted - reached) / (1 - reached));
  }
  return {roundedUp(light.red), roundedUp(light.green), roundedUp(light.blue)};
}

// `wanted` is at least 0 and at most the colour's luminance, which is not 0.
Rgb darker(const Rgb& color, double wanted) {
  const Light light = lightOf(color).scaled(wanted / luminance(color));
  return {roundedDown(light.red), roundedDown(light.green), roundedDown(light.blue)};
}

}  // namespace

double contrastRatio(const Rgb& one, const Rgb& other) {
  const auto [dark, light] = std::minmax({luminance(one), luminance(other)});
  return (light + kFlare) / (dark + kFlare);
}

Rgb withContrast(const Rgb& text, const Rgb& background, double minimum) {
  if (contrastRatio(text, background) >= minimum) return text;
  const double ground = luminance(background);
  const double enoughLight = (ground + kFlare) * minimum - kFlare;
  const double enoughDark = (ground + kFlare) / minimum - kFlare;
  const bool canBeLighter = enoughLight <= 1;
  const bool canBeDarker = enoughDark >= 0;
  const bool isLighter = luminance(text) >= ground;
  const bool staysOnItsSide = isLighter ? canBeLighter : canBeDarker;
  const bool isColorGivenUp = !canBeLighter && !canBeDarker;
  if (isColorGivenUp || (!staysOnItsSide && isGrey(text))) {
    return contrastRatio(kWhite, background) >= contrastRatio(kBlack, background) ? kWhite : kBlack;
  }
  return isLighter == staysOnItsSide ? lighter(text, enoughLight) : darker(text, enoughDark);
}

}  // namespace zolt::vt
