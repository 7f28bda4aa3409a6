#pragma once

#include <QFont>
#include <QRawFont>
#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "canvas/CanvasCell.h"
#include "canvas/CanvasPixels.h"
#include "canvas/CanvasStyle.h"
#include "canvas/GlyphMask.h"
#include "canvas/MaskCache.h"
#include "canvas/ShapingTime.h"
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

/// A canvas's font at one scale: its regular, bold, italic and bold italic face, and from other fonts what it lacks.
/// Each glyph is drawn once.
class CanvasFonts {
 public:
  /// `scale` device pixels to a logical one.
  CanvasFonts(const CanvasFont& font, double scale);
  CanvasFonts(const CanvasFonts&) = delete;
  CanvasFonts& operator=(const CanvasFonts&) = delete;

  /// The fixed-pitch system font at `size` pixels.
  static QFont systemFont(double size);
  /// The font that a canvas uses for `font`, at `size` pixels.
  static QFont fontFor(const CanvasFont& font, double size);

  double scale() const { return m_scale; }
  const CanvasFont& font() const { return m_font; }
  const CellMetrics& metrics() const { return m_metrics; }
  /// How long clusters and ligatures may be shaped; without a limit at first.
  ShapingTime& shapingTime() { return m_shapingTime; }

  /// The glyphs in one face.
  class Face {
   public:
    Face(const QFont& font, const CellMetrics& metrics, ShapingTime& shapingTime);

    /// The picture of an ASCII character, made when it is first needed; empty for one without (blank, control).
    const GlyphMask& mask(char character) {
      const auto index = static_cast<unsigned char>(character);
      if (index >= m_masks.size()) return m_blank;
      std::optional<GlyphMask>& mask = m_masks[index];
      if (!mask) mask = makeMask(character);
      return *mask;
    }
    /// The picture of a cluster, in UTF-8, over `columns`; null if it has none yet and the time for shaping is over.
    /// Valid until the next call, as that of a ligature.
    const GlyphMask* cluster(std::string_view utf8, int columns);
    /// The picture of ASCII characters that the font joins into ligatures, empty if it joins none of them; null as
    /// above.
    const GlyphMask* ligature(std::string_view ascii);

   private:
    GlyphMask makeMask(char character) const;
    GlyphMask makeCluster(const std::string& utf8, int columns) const;
    GlyphMask makeLigature(std::string_view ascii) const;

    QFont m_font;
    QRawFont m_raw;
    CellMetrics m_metrics;
    GlyphMask m_blank;
    std::array<std::optional<GlyphMask>, 128> m_masks;
    ShapingTime& m_shapingTime;
    MaskCache m_clusters;   // by the columns, as a character, and the text
    MaskCache m_ligatures;  // by the text
  };

  Face& face(FontWeight weight, FontSlant slant);

 private:
  CanvasFont m_font;
  double m_scale;
  CellMetrics m_metrics;
  ShapingTime m_shapingTime;
  std::array<std::optional<Face>, 4> m_faces;  // by weight + 2 * slant, loaded when first used
};

}  // namespace zolt
