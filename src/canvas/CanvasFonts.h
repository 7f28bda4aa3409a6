#pragma once

#include <QFont>
#include <QRawFont>
#include <array>
#include <optional>

#include "canvas/CanvasCell.h"
#include "canvas/CanvasPixels.h"
#include "canvas/GlyphMask.h"
#include "text/TextAttributes.h"

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

/// The fixed-pitch system font at one scale: its regular, bold, italic and bold italic face. Each glyph is
/// drawn once.
class CanvasFonts {
 public:
  /// `size` in logical pixels, `scale` device pixels to one of them.
  CanvasFonts(double size, double scale);

  /// The fixed-pitch system font at `size` pixels.
  static QFont systemFont(double size);

  double scale() const { return m_scale; }
  const CellMetrics& metrics() const { return m_metrics; }

  /// The glyphs of the ASCII characters in one face.
  class Face {
   public:
    explicit Face(const QFont& font);

    /// The picture of an ASCII character, made when it is first needed; empty for one without (blank, control).
    const GlyphMask& mask(char character) {
      const auto index = static_cast<unsigned char>(character);
      if (index >= m_masks.size()) return m_blank;
      std::optional<GlyphMask>& mask = m_masks[index];
      if (!mask) mask = makeMask(character);
      return *mask;
    }

   private:
    GlyphMask makeMask(char character) const;

    QRawFont m_font;
    GlyphMask m_blank;
    std::array<std::optional<GlyphMask>, 128> m_masks;
  };

  Face& face(FontWeight weight, FontSlant slant);

 private:
  double m_size;
  double m_scale;
  CellMetrics m_metrics;
  std::array<std::optional<Face>, 4> m_faces;  // by weight + 2 * slant, loaded when first used
};

}  // namespace zolt
