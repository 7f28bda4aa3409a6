#pragma once

#include <QFont>
#include <QRawFont>
#include <array>
#include <cstdint>
#include <optional>

#include "text/TextAttributes.h"
#include "view/canvas/CanvasCell.h"
#include "view/canvas/CanvasPixels.h"

namespace zolt {

/// The size of a character cell, and where the lines in it are.
struct CellMetrics {
  DevicePixels width{1};
  DevicePixels height{1};
  DevicePixels baseline{1};  ///< from the top of the cell, as the two below
  DevicePixels underlineTop;
  DevicePixels strikethroughTop;
  DevicePixels lineThickness{1};

  /// From the top of the first row, and the left of the first column.
  DevicePixels topOf(CanvasRow row) const { return height * row.value; }
  DevicePixels leftOf(CanvasColumn column) const { return width * column.value; }
};

/// The fixed-pitch system font at one scale: its regular, bold, italic and bold italic face. The glyph of each ASCII
/// character is looked up once.
class CanvasFonts {
 public:
  /// `size` in logical pixels, `scale` device pixels to one of them.
  CanvasFonts(double size, double scale);

  /// The fixed-pitch system font at `size` pixels.
  static QFont systemFont(double size);

  double scale() const { return m_scale; }
  const CellMetrics& metrics() const { return m_metrics; }

  const QRawFont& font(FontWeight weight, FontSlant slant);
  /// The glyph of an ASCII character; 0 for one without a picture (blank, control).
  std::uint32_t glyph(FontWeight weight, FontSlant slant, char character);

 private:
  struct LoadedFace {
    QRawFont font;
    std::array<std::uint32_t, 128> glyphs{};
  };

  LoadedFace& face(FontWeight weight, FontSlant slant);

  double m_size;
  double m_scale;
  CellMetrics m_metrics;
  std::array<std::optional<LoadedFace>, 4> m_faces;  // by weight + 2 * slant, loaded when first used
};

}  // namespace zolt
