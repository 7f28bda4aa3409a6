#include "controls/ControlColors.h"

#include <algorithm>
#include <cmath>

namespace zolt {

namespace {

constexpr double kReadable = 4.5;
constexpr double kHighContrast = 20;  // of black and white: such a palette is chosen for its contrast
constexpr QRgb kRedOnLight = 0xFFD92B26;
constexpr QRgb kRedOnDark = 0xFFFF6A62;

double linear(double channel) {
  return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& color) {
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

// Composites a translucent colour over a background.
QColor over(const QColor& background, QColor color) {
  const double share = color.alphaF();
  color.setAlphaF(1);
  return mixed(background, color, share);
}

}  // namespace

QColor mixed(const QColor& from, const QColor& to, double share) {
  const auto between = [share](int a, int b) { return static_cast<int>(std::lround(a + (b - a) * share)); };
  return {between(from.red(), to.red()), between(from.green(), to.green()), between(from.blue(), to.blue())};
}

double contrastRatio(const QColor& one, const QColor& other) {
  const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

QColor readable(const QColor& color, std::initializer_list<QColor> backgrounds, const QColor& text) {
  constexpr int kSteps = 20;
  for (int step = 0; step < kSteps; ++step) {
    const QColor candidate = mixed(color, text, static_cast<double>(step) / kSteps);
    if (std::ranges::all_of(backgrounds,
                            [&](const QColor& each) { return contrastRatio(candidate, each) >= kReadable; })) {
      return candidate;
    }
  }
  return text;
}

ControlColors::ControlColors(const QPalette& palette) {
  window = palette.color(QPalette::Window);
  text = palette.color(QPalette::WindowText);
  const QColor base = palette.color(QPalette::Base);
  const bool isDark = luminance(window) < luminance(text);
  // In dark schemes raised surfaces are lighter, but Base is usually darker than Window.
  const bool baseStandsOut = luminance(base) > luminance(window) && contrastRatio(window, base) > 1.03;
  card = baseStandsOut ? base : mixed(window, text, isDark ? 0.06 : 0.04);
  const bool isHighContrast = contrastRatio(window, text) > kHighContrast;
  hairline = mixed(card, text, isHighContrast ? 0.5 : isDark ? 0.13 : 0.1);
  secondary =
      readable(over(card, palette.color(QPalette::PlaceholderText)), {card, window, mixed(card, text, 0.1)}, text);
  // The active accent even for a disabled control, which is drawn fainter instead.
  accent = palette.color(QPalette::Active, QPalette::Highlight);
  accentText = readable(accent, {card, window, mixed(window, accent, 0.16)}, text);
  off = mixed(card, text, isHighContrast ? 0.5 : isDark ? 0.28 : 0.24);
  // Sunken on a dark card, almost the card's own colour on a light one.
  field = isDark ? mixed(card, base, 0.4) : mixed(card, text, 0.015);
  destructive = readable(QColor::fromRgb(isDark ? kRedOnDark : kRedOnLight), {field}, text);
  fieldBorder = mixed(card, text, isHighContrast ? 1 : isDark ? 0.24 : 0.22);
  raised = isDark ? mixed(card, text, 0.24) : base;
  ring = mixed(card, accent, 0.6);
}

}  // namespace zolt
