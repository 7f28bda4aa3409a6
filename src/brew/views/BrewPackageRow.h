#pragma once

#include <QPainter>
#include <QPalette>
#include <QRect>

#include "brew/BrewPackage.h"

namespace zolt {

/// Draws one package: its icon, its name above its description, its installed version. A value; main thread.
struct BrewPackageRow {
  const BrewPackage& package;
  BrewPackageType type;  ///< decides the icon, whatever the package's own type is

  /// The height of a row in logical pixels; a description adds a second line.
  static int height(const QFont& font, bool hasDescription);

  /// Paints into `rect`; `selected` if the background is the palette's highlight. Text that does not fit is elided.
  void paint(QPainter& painter, const QRect& rect, const QFont& font, const QPalette& palette, bool selected) const;

  /// For screen readers: name, description, version.
  QString spokenText() const;
};

}  // namespace zolt
