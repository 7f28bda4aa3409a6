#include "canvas/RowPainter.h"

#include <algorithm>
#include <cmath>

namespace zolt {

namespace {

constexpr QRgb kBlack = 0xFF000000;
// Blue enough to be seen on black and behind every palette colour, dark enough to leave white text readable.
constexpr QRgb kSelectionColor = 0xFF264F78;

ColumnRange columnsOf(const StyledPiece& piece) {
  return {.begin = piece.column, .end = piece.column + static_cast<int>(piece.text.size())};
}

// value / 255, rounded, for values up to 255 * 255.
constexpr std::uint32_t by255(std::uint32_t value) {
  return (value + 128 + ((value + 128) >> 8)) >> 8;
}

// `color` over `under`, each component in the share that `coverage` gives for it, from 0 to 255.
constexpr QRgb mixed(QRgb under, QRgb color, QRgb coverage) {
  QRgb result = kBlack;
  for (const int shift : {0, 8, 16}) {
    const std::uint32_t share = coverage >> shift & 0xFF;
    result |= by255((color >> shift & 0xFF) * share + (under >> shift & 0xFF) * (255 - share)) << shift;
  }
  return result;
}

// What is left of `coverage` with a colour of that alpha.
constexpr QRgb scaled(QRgb coverage, std::uint32_t alpha) {
  return mixed(0, coverage, alpha * 0x010101) & RGB_MASK;
}

}  // namespace

QRgb RowPainter::toRgb(const Color& color) {
  const auto component = [](double value) { return static_cast<int>(std::lround(std::clamp(value, 0.0, 1.0) * 255)); };
  return qRgba(component(color.red), component(color.green), component(color.blue), component(color.alpha));
}

// A black row of the columns up to `end`.
void RowPainter::begin(CanvasColumn end) {
  const CellMetrics& cell = m_fonts.metrics();
  const QSize size((cell.width * (end.value + 2)).toInt(), cell.height.toInt());
  if (m_picture.width() < size.width() || m_picture.height() < size.height()) {
    m_picture = QImage(size, QImage::Format_RGB32);
    m_pixels = reinterpret_cast<QRgb*>(m_picture.bits());
  }
  m_row = m_clip = QRect(QPoint(0, 0), size);
  fill(m_row, kBlack);
}

void RowPainter::paint(const RowContent& row, ColumnRange selected) {
  begin(std::max(row.end, selected.end));
  for (const StyledPiece& piece : row.pieces) {
    if (piece.attributes.background) fill(cellsOf(columnsOf(piece)), toRgb(*piece.attributes.background));
  }
  if (!selected.empty()) fill(cellsOf(selected), kSelectionColor);
  for (const StyledPiece& piece : row.pieces) {
    // Clear text is there for copying, not for seeing.
    if (piece.attributes.foreground.alpha <= 0) continue;
    const QRgb color = toRgb(piece.attributes.foreground);
    paintText(piece, color);
    paintLines(piece, color);
  }
}

void RowPainter::paintMark(const RowContent& row, ColumnRange columns, QRgb background, QRgb text) {
  m_clip = cellsOf(columns) & m_row;
  fill(m_clip, background);
  for (const StyledPiece& piece : row.pieces) {
    if (piece.column >= columns.end || columnsOf(piece).end <= columns.begin) continue;
    paintText(piece, text);
    paintLines(piece, text);
  }
}

void RowPainter::draw(QPainter& painter, DevicePoint origin) const {
  painter.drawImage(QPoint((origin.x - m_fonts.metrics().width).toInt(), origin.y.toInt()), m_picture, m_row);
}

QRect RowPainter::cellsOf(ColumnRange columns) const {
  const CellMetrics& cell = m_fonts.metrics();
  return {cell.leftOf(columns.begin + 1).toInt(), 0, (cell.width * (columns.end - columns.begin)).toInt(),
          cell.height.toInt()};
}

void RowPainter::fill(QRect area, QRgb color) {
  area &= m_clip;
  const std::uint32_t alpha = qAlpha(color);
  for (int y = area.top(); y <= area.bottom(); ++y) {
    QRgb* pixels = m_pixels + static_cast<std::ptrdiff_t>(y) * m_picture.width();
    if (alpha == 255) {
      std::fill(pixels + area.left(), pixels + area.right() + 1, color);
    } else {
      for (int x = area.left(); x <= area.right(); ++x) {
        pixels[x] = mixed(pixels[x], color, alpha * 0x010101);
      }
    }
  }
}

void RowPainter::blend(const GlyphMask& mask, int x, QRgb color) {
  const int left = x + mask.left;
  const int top = m_fonts.metrics().baseline.toInt() + mask.top;
  const QRect area = QRect(left, top, mask.width, mask.height) & m_clip;
  const std::uint32_t alpha = qAlpha(color);
  for (int row = area.top(); row <= area.bottom(); ++row) {
    QRgb* pixels = m_pixels + static_cast<std::ptrdiff_t>(row) * m_picture.width();
    const QRgb* coverages = mask.coverage.data() + static_cast<std::ptrdiff_t>(row - top) * mask.width;
    for (int column = area.left(); column <= area.right(); ++column) {
      QRgb coverage = coverages[column - left];
      if (coverage == 0) continue;
      if (alpha != 255) coverage = scaled(coverage, alpha);
      pixels[column] = mixed(pixels[column], color, coverage);
    }
  }
}

void RowPainter::paintText(const StyledPiece& piece, QRgb color) {
  const int width = m_fonts.metrics().width.toInt();
  CanvasFonts::Face& face = m_fonts.face(piece.attributes.font.weight, piece.attributes.font.slant);
  int x = cellsOf(columnsOf(piece)).left();
  for (const char character : piece.text) {
    if (const GlyphMask& mask = face.mask(character); !mask.empty()) blend(mask, x, color);
    x += width;
  }
}

void RowPainter::paintLines(const StyledPiece& piece, QRgb color) {
  const CellMetrics& cell = m_fonts.metrics();
  const auto line = [&](DevicePixels top) {
    const QRect cells = cellsOf(columnsOf(piece));
    fill({cells.x(), top.toInt(), cells.width(), cell.lineThickness.toInt()}, color);
  };
  if (piece.attributes.underline == Line::Single) line(cell.underlineTop);
  if (piece.attributes.strikethrough == Line::Single) line(cell.strikethroughTop);
}

}  // namespace zolt
