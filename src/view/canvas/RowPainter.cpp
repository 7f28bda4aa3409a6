#include "view/canvas/RowPainter.h"

#include <algorithm>

namespace zolt {

namespace {

// Blue enough to be seen on black and behind every palette colour, dark enough to leave white text readable.
constexpr QRgb kSelectionColor = 0xFF264F78;

ColumnRange columnsOf(const StyledPiece& piece) {
  return {.begin = piece.column, .end = piece.column + static_cast<int>(piece.text.size())};
}

}  // namespace

QColor RowPainter::toQColor(const Color& color) {
  const auto component = [](double value) { return static_cast<float>(std::clamp(value, 0.0, 1.0)); };
  return QColor::fromRgbF(component(color.red), component(color.green), component(color.blue), component(color.alpha));
}

void RowPainter::paint(const RowContent& row, DevicePoint origin, ColumnRange selected) {
  paintBackgrounds(row, origin);
  if (!selected.empty()) m_painter.fillRect(cellsOf(selected, origin), QColor::fromRgb(kSelectionColor));
  for (const StyledPiece& piece : row.pieces) {
    // Clear text is there for copying, not for seeing.
    if (piece.attributes.foreground.alpha <= 0) continue;
    const QColor color = toQColor(piece.attributes.foreground);
    paintText(piece, origin, color);
    paintLines(piece, origin, color);
  }
}

void RowPainter::paintMark(const RowContent& row, DevicePoint origin, ColumnRange columns, QColor background,
                           QColor text) {
  const QRect area = cellsOf(columns, origin);
  m_painter.save();
  m_painter.setClipRect(area, Qt::IntersectClip);
  m_painter.fillRect(area, background);
  for (const StyledPiece& piece : row.pieces) {
    if (piece.column >= columns.end || columnsOf(piece).end <= columns.begin) continue;
    paintText(piece, origin, text);
    paintLines(piece, origin, text);
  }
  m_painter.restore();
}

QRect RowPainter::cellsOf(ColumnRange columns, DevicePoint origin) const {
  const CellMetrics& cell = m_fonts.metrics();
  return {(origin.x + cell.leftOf(columns.begin)).toInt(), origin.y.toInt(),
          (cell.width * (columns.end - columns.begin)).toInt(), cell.height.toInt()};
}

void RowPainter::paintBackgrounds(const RowContent& row, DevicePoint origin) {
  for (const StyledPiece& piece : row.pieces) {
    if (!piece.attributes.background) continue;
    m_painter.fillRect(cellsOf(columnsOf(piece), origin), toQColor(*piece.attributes.background));
  }
}

void RowPainter::paintText(const StyledPiece& piece, DevicePoint origin, QColor color) {
  const CellMetrics& cell = m_fonts.metrics();
  const FontFace& face = piece.attributes.font;
  m_glyphs.clear();
  m_positions.clear();
  const double baseline = (origin.y + cell.baseline).toDouble();
  DevicePixels x = origin.x + cell.leftOf(piece.column);
  for (const char character : piece.text) {
    if (const std::uint32_t glyph = m_fonts.glyph(face.weight, face.slant, character); glyph != 0) {
      m_glyphs.push_back(glyph);
      m_positions.emplace_back(x.toDouble(), baseline);
    }
    x = x + cell.width;
  }
  if (m_glyphs.empty()) return;
  m_run.setRawFont(m_fonts.font(face.weight, face.slant));
  m_run.setRawData(m_glyphs.data(), m_positions.data(), static_cast<int>(m_glyphs.size()));
  m_painter.setPen(color);
  m_painter.drawGlyphRun(QPointF(0, 0), m_run);
}

void RowPainter::paintLines(const StyledPiece& piece, DevicePoint origin, QColor color) {
  const CellMetrics& cell = m_fonts.metrics();
  const auto line = [&](DevicePixels top) {
    const QRect cells = cellsOf(columnsOf(piece), origin);
    m_painter.fillRect(cells.x(), cells.y() + top.toInt(), cells.width(), cell.lineThickness.toInt(), color);
  };
  if (piece.attributes.underline == Line::Single) line(cell.underlineTop);
  if (piece.attributes.strikethrough == Line::Single) line(cell.strikethroughTop);
}

}  // namespace zolt
