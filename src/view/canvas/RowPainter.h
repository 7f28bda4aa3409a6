#pragma once

#include <QColor>
#include <QGlyphRun>
#include <QPainter>
#include <QRect>
#include <vector>

#include "view/canvas/CanvasFonts.h"
#include "view/canvas/RowSource.h"

namespace zolt {

/// Paints rows of text. The painter's coordinates are device pixels.
class RowPainter {
 public:
  RowPainter(QPainter& painter, CanvasFonts& fonts) : m_painter(painter), m_fonts(fonts) {}

  /// Paints a row with its top left corner at `origin`: backgrounds, the selection over them, then the text.
  void paint(const RowContent& row, DevicePoint origin, ColumnRange selected);

  /// Paints columns of a row once more, the text in one colour on another: a mark that is seen whatever it marks.
  void paintMark(const RowContent& row, DevicePoint origin, ColumnRange columns, QColor background, QColor text);

  /// Clamped to what a screen can show.
  static QColor toQColor(const Color& color);

 private:
  void paintBackgrounds(const RowContent& row, DevicePoint origin);
  void paintText(const StyledPiece& piece, DevicePoint origin, QColor color);
  void paintLines(const StyledPiece& piece, DevicePoint origin, QColor color);
  /// The cells of `columns` in a row whose top left corner is at `origin`.
  QRect cellsOf(ColumnRange columns, DevicePoint origin) const;

  QPainter& m_painter;
  CanvasFonts& m_fonts;
  QGlyphRun m_run;
  std::vector<quint32> m_glyphs;
  std::vector<QPointF> m_positions;
};

}  // namespace zolt
