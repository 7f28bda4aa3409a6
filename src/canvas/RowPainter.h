#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QRgb>

#include "canvas/CanvasCursor.h"
#include "canvas/CanvasFonts.h"
#include "canvas/CanvasStyle.h"
#include "canvas/RowContent.h"

namespace zolt {

/// Paints rows of text, one at a time into a picture of its own: cells may each have a colour, and mixing a glyph's
/// mask into a picture costs a fraction of what QPainter takes to change its pen and draw a glyph.
///
/// `paint` begins a row, the others add to it, `draw` shows it. Lengths are device pixels.
class RowPainter {
 public:
  /// Rows reach at least `width` to the right of their origin.
  RowPainter(CanvasFonts& fonts, const CanvasColors& colors, DevicePixels width = {})
      : m_fonts(fonts), m_colors(colors), m_width(width) {}

  enum class Blinking { Shown, Hidden };

  /// Paints a row on the background: backgrounds, the selection over them, then the text. The picture has room for what
  /// is added up to the column `room`.
  void paint(const RowContent& row, ColumnRange selected, Blinking blinking = Blinking::Shown, CanvasColumn room = {});

  /// Paints columns of the row once more, the text in one colour on another: a mark that is seen whatever it marks.
  void paintMark(const RowContent& row, ColumnRange columns, QRgb background, QRgb text);
  /// Underlines columns in the colour of the text there.
  void paintLink(const RowContent& row, ColumnRange columns);
  void paintCursor(const RowContent& row, const CanvasCursor& cursor);

  /// Whether something of the row is still missing, since the time for shaping is over: it is left blank, or without
  /// its ligatures.
  bool isUnfinished() const { return m_isUnfinished; }

  /// Draws the row with its top left corner at `origin`; the painter's coordinates are device pixels.
  void draw(QPainter& painter, DevicePoint origin) const;

 private:
  void paintGround(const RowContent& row, ColumnRange selected, CanvasColumn end);
  void fill(QRect area, QRgb color);
  /// `x` is the left of the glyph's cell in the picture.
  void blend(const GlyphMask& mask, int x, QRgb color);
  void blendColored(const GlyphMask& mask, int x, std::uint32_t alpha);
  void paintText(std::string_view text, const TextPiece& piece, QRgb color);
  void paintJoined(std::string_view text, int x, CanvasFonts::Face& face, QRgb color);
  void paintLines(const TextPiece& piece, QRgb color, QRgb underlineColor);
  void paintUnderline(QRect cells, LineStyle style, QRgb color);
  void paintCurl(QRect cells, QRgb color);
  /// The cells of `columns`, in the picture.
  QRect cellsOf(ColumnRange columns) const;

  CanvasFonts& m_fonts;
  CanvasColors m_colors;
  DevicePixels m_width;
  QImage m_picture;  // as large as the largest row needed; a cell of room before and after it for what overhangs
  QRgb* m_pixels = nullptr;  // of m_picture
  QRect m_row;               // the part of the picture that the row takes
  QRect m_clip;              // what is being painted
  bool m_isUnfinished = false;
};

}  // namespace zolt
