#pragma once

#include <QImage>
#include <QPainterPath>

#include "canvas/CanvasFonts.h"
#include "canvas/GlyphMask.h"
#include "canvas/drawn/CellAxis.h"

namespace zolt {

/// How much of a pixel is covered, 0 to 255.
constexpr int kWholly = 255;
constexpr int kHalf = 128;

/// The picture of one cell while a symbol is drawn; nothing is covered at first. What is drawn beyond the cell is cut
/// off.
class CellPicture {
 public:
  explicit CellPicture(const CellMetrics& cell);

  const CellAxis& columns() const { return m_columns; }
  const CellAxis& rows() const { return m_rows; }
  int width() const { return m_columns.size; }
  int height() const { return m_rows.size; }
  int thickness() const { return m_columns.thickness; }

  /// Whole pixels; never covers one less than before.
  void fill(Span columns, Span rows, int coverage = kWholly);
  /// An area in pixels from the top left, smoothed at its edges. Parts that touch are filled without a seam if they are
  /// one path.
  void fill(const QPainterPath& area, int coverage = kWholly);
  /// A light line along a path, smoothed; its ends reach beyond the path by half its thickness.
  void stroke(const QPainterPath& path);
  /// Covers what was not.
  void invert();

  GlyphMask mask() const;

 private:
  CellAxis m_columns;
  CellAxis m_rows;
  int m_baseline;
  QImage m_image;
};

}  // namespace zolt
