#pragma once

#include <QImage>
#include <QPainter>
#include <QRect>
#include <QRgb>

#include "canvas/CanvasFonts.h"
#include "canvas/RowContent.h"
#include "text/Color.h"

namespace zolt {

/// Paints rows of text, one at a time into a picture of its own: cells may each have a colour, and mixing a glyph's
/// mask into a picture costs a fraction of what QPainter takes to change its pen and draw a glyph.
///
/// `paint` begins a row, `paintMark` adds to it, `draw` shows it. Lengths are device pixels.
class RowPainter {
 public:
  explicit RowPainter(CanvasFonts& fonts) : m_fonts(fonts) {}

  /// Paints a row on black: backgrounds, the selection over them, then the text.
  void paint(const RowContent& row, ColumnRange selected);

  /// Paints columns of the row once more, the text in one colour on another: a mark that is seen whatever it marks.
  void paintMark(const RowContent& row, ColumnRange columns, QRgb background, QRgb text);

  /// Draws the row with its top left corner at `origin`; the painter's coordinates are device pixels.
  void draw(QPainter& painter, DevicePoint origin) const;

  /// With alpha; clamped to what a screen can show.
  static QRgb toRgb(const Color& color);

 private:
  void begin(CanvasColumn end);
  void fill(QRect area, QRgb color);
  /// `x` is the left of the glyph's cell in the picture.
  void blend(const GlyphMask& mask, int x, QRgb color);
  void paintText(const StyledPiece& piece, QRgb color);
  void paintLines(const StyledPiece& piece, QRgb color);
  /// The cells of `columns`, in the picture.
  QRect cellsOf(ColumnRange columns) const;

  CanvasFonts& m_fonts;
  QImage m_picture;  // as large as the largest row needed; a cell of room before and after it for what overhangs
  QRgb* m_pixels = nullptr;  // of m_picture
  QRect m_row;               // the part of the picture that the row takes
  QRect m_clip;              // what is being painted
};

}  // namespace zolt
