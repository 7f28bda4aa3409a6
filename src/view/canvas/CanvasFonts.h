#pragma once

#include <QFont>
#include <QRawFont>
#include <array>
#include <cstdint>
#include <optional>

#include "text/TextAttributes.h"

namespace zolt {

/// The size of a character cell, in device pixels.
struct CellMetrics {
  int width = 1;
  int height = 1;
  int baseline = 1;  ///< from the top of the cell
  int underlineTop = 0;
  int strikethroughTop = 0;
  int lineThickness = 1;
};

/// The fixed-pitch system font in its four cuts at one scale, with the glyph of each ASCII character looked up once.
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
  struct Cut {
    QRawFont font;
    std::array<std::uint32_t, 128> glyphs{};
  };

  Cut& cut(FontWeight weight, FontSlant slant);

  double m_size;
  double m_scale;
  CellMetrics m_metrics;
  std::array<std::optional<Cut>, 4> m_cuts;  // weight + 2 * slant, made when first used
};

}  // namespace zolt
