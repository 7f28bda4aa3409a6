#include "canvas/RowPainter.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>

namespace zolt {

namespace {

// value / 255, rounded, for values up to 255 * 255.
constexpr std::uint32_t by255(std::uint32_t value) {
  return (value + 128 + ((value + 128) >> 8)) >> 8;
}

// The same for two values at once, in the halves of a word.
constexpr std::uint32_t bothBy255(std::uint32_t values) {
  constexpr std::uint32_t kLow = 0x00FF00FF;
  const std::uint32_t rounded = values + 0x00800080;
  return (rounded + (rounded >> 8 & kLow)) >> 8 & kLow;
}

// `color`, opaque, over `under` in a share from 0 to 255: two components at once.
constexpr QRgb mixed(QRgb under, QRgb color, std::uint32_t share) {
  constexpr std::uint32_t kLow = 0x00FF00FF;
  const std::uint32_t rest = 255 - share;
  const std::uint32_t redAndBlue = (color & kLow) * share + (under & kLow) * rest;
  const std::uint32_t alphaAndGreen = ((color >> 8 & kLow) | 0x00FF0000) * share + (under >> 8 & kLow) * rest;
  return bothBy255(redAndBlue) | bothBy255(alphaAndGreen) << 8;
}

constexpr bool isVisible(QRgb color) {
  return qAlpha(color) != 0;
}

// Characters that fonts for programming join: what operators and arrows are made of.
constexpr auto kJoining = [] {
  std::array<bool, 256> joining{};
  for (const char character : std::string_view("!#$%&*+-./:;<=>?@\\^_|~")) {
    joining[static_cast<unsigned char>(character)] = true;
  }
  return joining;
}();

constexpr bool mayJoin(char character) {
  return kJoining[static_cast<unsigned char>(character)];
}

}  // namespace

// Backgrounds are the same all the way down: one line of pixels is painted, and copied.
void RowPainter::paintGround(const RowContent& row, ColumnRange selected, CanvasColumn end) {
  const CellMetrics& cell = m_fonts.metrics();
  const QSize size(std::max(cell.width * (end.value + 2), cell.width + m_width).toInt(), cell.height.toInt());
  if (m_picture.width() < size.width() || m_picture.height() < size.height()) {
    const bool isOpaque = qAlpha(m_colors.background) == 255;
    m_picture = QImage(size, isOpaque ? QImage::Format_RGB32 : QImage::Format_ARGB32_Premultiplied);
    m_pixels = reinterpret_cast<QRgb*>(m_picture.bits());
  }
  m_row = QRect(QPoint(0, 0), size);
  m_clip = QRect(0, 0, size.width(), 1);
  std::fill_n(m_pixels, size.width(), qPremultiply(m_colors.background));
  for (const TextPiece& piece : row.pieces) {
    if (isVisible(piece.look.background)) fill(cellsOf(piece.range()), piece.look.background);
  }
  if (!selected.empty()) fill(cellsOf(selected), m_colors.selection);
  for (int y = 1; y < size.height(); ++y) {
    std::copy_n(m_pixels, size.width(), m_pixels + static_cast<std::ptrdiff_t>(y) * m_picture.width());
  }
  m_clip = m_row;
}

void RowPainter::paint(const RowContent& row, ColumnRange selected, Blinking blinking, CanvasColumn room) {
  m_isUnfinished = false;
  paintGround(row, selected, std::max({row.end, selected.end, room}));
  for (const TextPiece& piece : row.pieces) {
    // Clear text is there for copying, not for seeing.
    if (!isVisible(piece.look.foreground) || (piece.look.blinks && blinking == Blinking::Hidden)) continue;
    paintText(row.textOf(piece), piece, piece.look.foreground);
    const QRgb underline = piece.look.underlineColor;
    paintLines(piece, piece.look.foreground, isVisible(underline) ? underline : piece.look.foreground);
  }
  if (!selected.empty() && isVisible(m_colors.selectedText)) {
    paintMark(row, selected, m_colors.selection, m_colors.selectedText);
  }
}

void RowPainter::paintMark(const RowContent& row, ColumnRange columns, QRgb background, QRgb text) {
  m_clip = cellsOf(columns) & m_row;
  fill(m_clip, background);
  for (const TextPiece& piece : row.pieces) {
    if (piece.column >= columns.end || piece.range().end <= columns.begin) continue;
    paintText(row.textOf(piece), piece, text);
    paintLines(piece, text, text);
  }
  m_clip = m_row;
}

void RowPainter::paintLink(const RowContent& row, ColumnRange columns) {
  for (const TextPiece& piece : row.pieces) {
    const ColumnRange part{.begin = std::max(piece.column, columns.begin),
                           .end = std::min(piece.range().end, columns.end)};
    if (!part.empty()) paintUnderline(cellsOf(part), LineStyle::Single, piece.look.foreground);
  }
}

void RowPainter::paintCursor(const RowContent& row, const CanvasCursor& cursor) {
  const QRect cells = cellsOf(cursor.columns) & m_row;
  const int thick = std::max(1, static_cast<int>(std::lround(m_fonts.scale())));
  switch (cursor.look) {
    case CursorLook::Block:
      paintMark(row, cursor.columns, cursor.color, cursor.text);
      break;
    case CursorLook::HollowBlock:
      fill({cells.left(), cells.top(), cells.width(), thick}, cursor.color);
      fill({cells.left(), cells.bottom() - thick + 1, cells.width(), thick}, cursor.color);
      fill({cells.left(), cells.top() + thick, thick, cells.height() - 2 * thick}, cursor.color);
      fill({cells.right() - thick + 1, cells.top() + thick, thick, cells.height() - 2 * thick}, cursor.color);
      break;
    case CursorLook::Underline:
      fill({cells.left(), cells.bottom() - 2 * thick + 1, cells.width(), 2 * thick}, cursor.color);
      break;
    case CursorLook::Bar:
      fill({cells.left(), cells.top(), 2 * thick, cells.height()}, cursor.color);
      break;
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
        pixels[x] = mixed(pixels[x], color, alpha);
      }
    }
  }
}

void RowPainter::blend(const GlyphMask& mask, int x, QRgb color) {
  const int left = x + mask.left;
  const int top = m_fonts.metrics().baseline.toInt() + mask.top;
  const QRect area = QRect(left, top, mask.width, mask.height) & m_clip;
  if (area.isEmpty()) return;
  const std::ptrdiff_t pitch = m_picture.width();
  const QRgb* coverages = mask.coverage.data() + static_cast<std::ptrdiff_t>(area.top() - top) * mask.stride();
  const bool hasWholeRows = area.width() == mask.width && left + mask.stride() <= m_row.width();
  if (hasWholeRows) {
    blendMask(m_pixels + area.top() * pitch + left, pitch, coverages, mask.stride(), area.height(), color);
    return;
  }
  // A part of the glyph: no pixel beside it may be touched.
  std::array<QRgb, kMaskRowUnit> part{};
  for (int row = area.top(); row <= area.bottom(); ++row, coverages += mask.stride()) {
    for (int column = area.left(); column <= area.right(); ++column) {
      QRgb* pixel = m_pixels + row * pitch + column;
      part[0] = *pixel;
      std::array<QRgb, kMaskRowUnit> coverage{coverages[column - left]};
      blendMask(part.data(), 0, coverage.data(), kMaskRowUnit, 1, color);
      *pixel = part[0];
    }
  }
}

// A picture in colours of its own, of which only the text's alpha remains.
void RowPainter::blendColored(const GlyphMask& mask, int x, std::uint32_t alpha) {
  const int left = x + mask.left;
  const int top = m_fonts.metrics().baseline.toInt() + mask.top;
  const QRect area = QRect(left, top, mask.width, mask.height) & m_clip;
  for (int row = area.top(); row <= area.bottom(); ++row) {
    QRgb* pixels = m_pixels + static_cast<std::ptrdiff_t>(row) * m_picture.width();
    const QRgb* sources = mask.coverage.data() + static_cast<std::ptrdiff_t>(row - top) * mask.stride();
    for (int column = area.left(); column <= area.right(); ++column) {
      const QRgb source = sources[column - left];
      const std::uint32_t rest = 255 - by255(static_cast<std::uint32_t>(qAlpha(source)) * alpha);
      QRgb result = 0;
      for (const int shift : {0, 8, 16, 24}) {
        const std::uint32_t over = by255((source >> shift & 0xFF) * alpha);
        result |= std::min(over + by255((pixels[column] >> shift & 0xFF) * rest), 255U) << shift;
      }
      pixels[column] = result;
    }
  }
}

void RowPainter::paintText(std::string_view text, const TextPiece& piece, QRgb color) {
  CanvasFonts::Face& face = m_fonts.face(piece.look.weight, piece.look.slant);
  int x = cellsOf(piece.range()).left();
  if (piece.isCluster) {
    const GlyphMask* mask = face.cluster(text, piece.columns);
    if (mask == nullptr) {
      m_isUnfinished = true;
    } else {
      mask->isColored ? blendColored(*mask, x, qAlpha(color)) : blend(*mask, x, color);
    }
    return;
  }
  if (m_fonts.font().ligatures) return paintJoined(text, x, face, color);
  const int width = m_fonts.metrics().width.toInt();
  for (const char character : text) {
    if (const GlyphMask& mask = face.mask(character); !mask.empty()) blend(mask, x, color);
    x += width;
  }
}

void RowPainter::paintJoined(std::string_view text, int x, CanvasFonts::Face& face, QRgb color) {
  const int width = m_fonts.metrics().width.toInt();
  for (std::size_t i = 0; i < text.size();) {
    std::size_t end = i;
    while (end < text.size() && mayJoin(text[end])) {
      ++end;
    }
    const bool mayBeJoined = end - i > 1;
    const GlyphMask* joined = mayBeJoined ? face.ligature(text.substr(i, end - i)) : nullptr;
    if (mayBeJoined && joined == nullptr) m_isUnfinished = true;
    if (joined != nullptr && !joined->empty()) {
      blend(*joined, x, color);
      x += width * static_cast<int>(end - i);
      i = end;
      continue;
    }
    for (end = std::max(end, i + 1); i < end; ++i) {
      if (const GlyphMask& mask = face.mask(text[i]); !mask.empty()) blend(mask, x, color);
      x += width;
    }
  }
}

void RowPainter::paintLines(const TextPiece& piece, QRgb color, QRgb underlineColor) {
  const CellMetrics& cell = m_fonts.metrics();
  const QRect cells = cellsOf(piece.range());
  const auto line = [&](DevicePixels top) {
    fill({cells.x(), top.toInt(), cells.width(), cell.lineThickness.toInt()}, color);
  };
  if (piece.look.underline != LineStyle::None) paintUnderline(cells, piece.look.underline, underlineColor);
  if (piece.look.struck) line(cell.strikethroughTop);
  if (piece.look.overlined) line(DevicePixels(0));
}

void RowPainter::paintUnderline(QRect cells, LineStyle style, QRgb color) {
  const CellMetrics& cell = m_fonts.metrics();
  const int thick = cell.lineThickness.toInt();
  const int top = cell.underlineTop.toInt();
  const int width = cell.width.toInt();
  // Patterns begin at each cell, so that they do not move when text beside them changes.
  const auto repeated = [&](int length, int period) {
    for (int x = cells.left(); x <= cells.right(); x += width) {
      for (int at = 0; at < width; at += period) {
        fill(QRect(x + at, top, std::min(length, width - at), thick) & cells, color);
      }
    }
  };
  switch (style) {
    case LineStyle::None:
      break;
    case LineStyle::Single:
      fill({cells.x(), top, cells.width(), thick}, color);
      break;
    case LineStyle::Double: {
      const int lower = std::min(top + 2 * thick, cell.height.toInt() - thick);
      fill({cells.x(), lower, cells.width(), thick}, color);
      fill({cells.x(), lower - 2 * thick, cells.width(), thick}, color);
      break;
    }
    case LineStyle::Curly:
      paintCurl(cells, color);
      break;
    case LineStyle::Dotted:
      repeated(thick, 2 * thick);
      break;
    case LineStyle::Dashed: {
      // Half a dash at either end of a cell makes a whole one with its neighbour's.
      const int quarter = std::max(1, width / 4);
      for (int x = cells.left(); x <= cells.right(); x += width) {
        fill(QRect(x, top, quarter, thick) & cells, color);
        fill(QRect(x + width - quarter, top, quarter, thick) & cells, color);
      }
      break;
    }
  }
}

// One wave to a cell, antialiased, between the baseline and the bottom of the row.
void RowPainter::paintCurl(QRect cells, QRgb color) {
  const CellMetrics& cell = m_fonts.metrics();
  const double thick = std::max(1.0, cell.lineThickness.toDouble());
  const double bottom = cell.height.toDouble() - thick / 2;
  const double middle = std::min(cell.underlineTop.toDouble() + thick, bottom - thick);
  const double swing = std::max(1.0, bottom - middle - thick / 2);
  constexpr double kTurn = 6.283185307179586;
  const std::uint32_t alpha = qAlpha(color);
  const QRect area = cells & m_clip;
  for (int x = area.left(); x <= area.right(); ++x) {
    const double phase = (x - cells.left() + 0.5) / cell.width.toDouble();
    const double center = middle + swing * std::sin(kTurn * phase);
    // A steep line is as thick as a flat one: its height grows with its slope.
    const double slope = swing * kTurn / cell.width.toDouble() * std::cos(kTurn * phase);
    const double half = thick / 2 * std::sqrt(1 + slope * slope);
    for (int y = std::max(area.top(), static_cast<int>(center - half)); y <= area.bottom() && y < center + half; ++y) {
      const double covered =
          std::clamp(std::min(y + 1.0, center + half) - std::max<double>(y, center - half), 0.0, 1.0);
      const auto share = static_cast<std::uint32_t>(std::lround(covered * alpha));
      QRgb& pixel = m_pixels[static_cast<std::ptrdiff_t>(y) * m_picture.width() + x];
      pixel = mixed(pixel, color, share);
    }
  }
}

}  // namespace zolt
