#pragma once

#include <QRgb>
#include <QString>

namespace zolt {

/// The colours of a canvas that no row has: opaque but for the background, through which a desktop may show.
struct CanvasColors {
  QRgb background = 0xFF000000;
  QRgb text = 0xFFFFFFFF;
  /// Blue enough to be seen on black and behind every palette colour, dark enough to leave white text readable.
  QRgb selection = 0xFF264F78;
  QRgb selectedText = 0;  ///< wholly transparent: text keeps its colours when it is selected

  friend bool operator==(const CanvasColors&, const CanvasColors&) = default;
};

/// The font of a canvas.
struct CanvasFont {
  QString family{};  ///< empty, or not installed: the fixed-pitch system font
  double size = 14;  ///< logical pixels
  double lineSpacing =
      0;  ///< the least height of a row, in sizes of the font; a row is never lower than the font needs
  bool ligatures = false;

  friend bool operator==(const CanvasFont&, const CanvasFont&) = default;
};

}  // namespace zolt
