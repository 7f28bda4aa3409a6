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
