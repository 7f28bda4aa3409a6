#include "desktop/DesktopPalette.h"

#include <QApplication>
#include <array>
#include <cstdlib>
#include <utility>

namespace zolt {

namespace {

struct Shade {
  QPalette::ColorRole role;
  QRgb dark;
  QRgb light;
};

constexpr std::array kShades{
    Shade{QPalette::Window, 0xFF242426, 0xFFF2F2F4},
    Shade{QPalette::WindowText, 0xFFF0F0F2, 0xFF1C1C1E},
    Shade{QPalette::Base, 0xFF313134, 0xFFFFFFFF},
    Shade{QPalette::AlternateBase, 0xFF2B2B2E, 0xFFF7F7F9},
    Shade{QPalette::Text, 0xFFF0F0F2, 0xFF1C1C1E},
    Shade{QPalette::PlaceholderText, 0xFFA9A9B0, 0xFF63636A},
    Shade{QPalette::Button, 0xFF3A3A3D, 0xFFFFFFFF},
    Shade{QPalette::ButtonText, 0xFFF0F0F2, 0xFF1C1C1E},
    Shade{QPalette::BrightText, 0xFFFF6961, 0xFFD70015},
    Shade{QPalette::ToolTipBase, 0xFF3A3A3D, 0xFFFFFFFF},
    Shade{QPalette::ToolTipText, 0xFFF0F0F2, 0xFF1C1C1E},
    Shade{QPalette::Highlight, 0xFF2F6FDE, 0xFF2565D0},
    Shade{QPalette::HighlightedText, 0xFFFFFFFF, 0xFFFFFFFF},
    Shade{QPalette::Link, 0xFF7FB0FF, 0xFF1A5CC8},
    Shade{QPalette::LinkVisited, 0xFFB9A0F0, 0xFF6A3FB0},
    Shade{QPalette::Light, 0xFF4A4A4E, 0xFFFFFFFF},
    Shade{QPalette::Midlight, 0xFF414145, 0xFFE6E6EA},
    Shade{QPalette::Mid, 0xFF4B4B50, 0xFFD2D2D7},
    Shade{QPalette::Dark, 0xFF18181A, 0xFFB4B4BA},
    Shade{QPalette::Shadow, 0xFF0E0E10, 0xFF6E6E74},
};

constexpr std::array kTextRoles{QPalette::WindowText, QPalette::Text, QPalette::ButtonText};

QPalette paletteOf(QRgb Shade::*scheme) {
  QPalette palette;
  for (const Shade& shade : kShades) {
    palette.setColor(shade.role, QColor::fromRgb(shade.*scheme));
  }
  for (const QPalette::ColorRole role : kTextRoles) {
    QColor faded = palette.color(QPalette::Active, role);
    faded.setAlphaF(0.45F);
    palette.setColor(QPalette::Disabled, role, faded);
  }
  palette.setColor(QPalette::Disabled, QPalette::Highlight, palette.color(QPalette::Active, QPalette::Mid));
  return palette;
}

}  // namespace

bool isDark(const QPalette& palette) {
  return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

std::optional<QColor> visiblePlaceholder(const QPalette& palette) {
  constexpr int kHardly = 48;  // of 255
  const QColor field = palette.color(QPalette::Base);
  const QColor placeholder = palette.color(QPalette::PlaceholderText);
  const double seen = (placeholder.lightness() - field.lightness()) * placeholder.alphaF();
  if (std::abs(seen) >= kHardly) return std::nullopt;
  QColor faded = palette.color(QPalette::Text);
  faded.setAlphaF(0.6F);
  return faded;
}

QPalette darkPalette() {
  return paletteOf(&Shade::dark);
}

QPalette lightPalette() {
  return paletteOf(&Shade::light);
}

DesktopPalette::DesktopPalette(QObject* parent) : QObject(parent), m_native(nativePalette()) {
  connect(&m_scheme, &ColorScheme::changed, this, &DesktopPalette::apply);
}

QPalette DesktopPalette::nativePalette() {
  if (const auto placeholder = visiblePlaceholder(QApplication::palette())) {
    QPalette own = QApplication::palette();
    own.setColor(QPalette::PlaceholderText, *placeholder);
    QApplication::setPalette(own);
  }
  return QApplication::palette();
}

void DesktopPalette::apply(ColorScheme::Preference preference) {
  const bool wantsDark = preference == ColorScheme::Preference::Dark;
  const bool nativeFits = preference == ColorScheme::Preference::None || isDark(m_native) == wantsDark;
  QApplication::setPalette(nativeFits ? m_native : wantsDark ? darkPalette() : lightPalette());
}

}  // namespace zolt
