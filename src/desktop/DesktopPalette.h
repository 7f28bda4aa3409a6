#pragma once

#include <QPalette>
#include <optional>

#include "desktop/ColorScheme.h"

namespace zolt {

/// Whether a palette has light text on a dark background.
bool isDark(const QPalette& palette);

/// A colour for the placeholders of fields, where the palette's own hardly differs from the field: some desktops set no
/// such colour, so that it stays black whatever the others are. Nothing where it does differ.
std::optional<QColor> visiblePlaceholder(const QPalette& palette);

/// Complete palettes for a dark and a light desktop. Text and secondary text have a contrast of at least 4.5 to 1 on
/// every background they appear on (WCAG 2.1, 1.4.3).
QPalette darkPalette();
QPalette lightPalette();

/// Keeps the application's palette in step with the desktop's colour scheme: if the toolkit's own palette is dark where
/// the desktop prefers light, or the reverse, ours replaces it. Gives the palette placeholders that can be seen. Create
/// it after the QApplication. Main thread.
class DesktopPalette : public QObject {
  Q_OBJECT

 public:
  explicit DesktopPalette(QObject* parent = nullptr);

 private:
  void apply(ColorScheme::Preference preference);

  static QPalette nativePalette();

  QPalette m_native;
  ColorScheme m_scheme;
};

}  // namespace zolt
