// Painting a frame: its rows, what is being composed, and what blinks.
#include <QApplication>
#include <QBackingStore>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <QStyleHints>
#include <algorithm>
#include <utility>

#include "canvas/RowPainter.h"
#include "canvas/TextCanvas.h"

namespace zolt {

namespace {

constexpr std::chrono::milliseconds kFlashTime{120};
// Over the text at its brightest: to be noticed, not to dazzle.
constexpr int kFlashAlpha = 48;
// Of the ground over a dimmed view: the text stays readable.
constexpr int kDimAlpha = 76;
// Of a frame. A key waits for it at most twice: for the frame that is being made, and for its own.
constexpr std::chrono::milliseconds kShapingTime{6};

// Whether a widget is painted for its window, and not for a picture of it.
bool paintsWindow(const QWidget& widget, const QPainter& painter) {
  QBackingStore* store = widget.backingStore();
  return store != nullptr && painter.paintEngine()->paintDevice() == store->paintDevice();
}

}  // namespace

void TextCanvas::updateRows(const std::vector<std::size_t>& rows) {
  for (const std::size_t row : rows) {
    QRectF area = toLogical({.x = {}, .y = m_frame.topOf(row)}, {}, m_frame.rowHeight);
    area.setWidth(viewport()->width());
    viewport()->update(area.toAlignedRect());
  }
}

void TextCanvas::paintEvent(QPaintEvent* event) {
  if (!m_frameValid) {
    layOut();
    updateScrollBar();
    updateBlinking();
    m_frameValid = true;
  }
  QPainter painter(viewport());
  if (paintsWindow(*viewport(), painter)) m_fonts->shapingTime().limit(m_clock, kShapingTime);
  // What is translucent replaces what was there.
  painter.setCompositionMode(QPainter::CompositionMode_Source);
  const double scale = m_fonts->scale();
  // Device pixels: glyphs are drawn at their own size, and nothing falls between two pixels.
  painter.scale(1 / scale, 1 / scale);
  const DevicePoint origin{.x = toDevice(inset), .y = m_frame.firstRowTop};
  RowPainter rows(*m_fonts, m_colors, toDevice(LogicalPixels(viewport()->width())) - origin.x);
  for (const QRect& logical : event->region()) {
    const QRectF area(logical.x() * scale, logical.y() * scale, logical.width() * scale, logical.height() * scale);
    painter.setClipRect(area);
    // What rows do not reach: above and below them, and to the left where cells are narrower than the inset.
    const auto fill = [&](double right, double top, double bottom) {
      const QRectF part = QRectF(QPointF(0, top), QPointF(right, bottom)) & area;
      if (!part.isEmpty()) painter.fillRect(part, QColor::fromRgba(m_colors.background));
    };
    fill(area.right(), 0, origin.y.toDouble());
    fill(area.right(), m_frame.topOf(m_rows.size()).toDouble(), area.bottom());
    fill((origin.x - m_fonts->metrics().width).toDouble(), area.top(), area.bottom());
    const double firstRow = (area.top() - origin.y.toDouble()) / m_frame.rowHeight.toDouble();
    for (auto row = static_cast<std::size_t>(std::max(firstRow, 0.0)); row < m_rows.size(); ++row) {
      const DevicePoint at{.x = origin.x, .y = m_frame.topOf(row)};
      if (at.y.toDouble() >= area.bottom()) break;
      paintRow(rows, row);
      rows.draw(painter, at);
      if (!rows.isUnfinished()) continue;
      m_frame.rows[row].isUnfinished = true;
      if (!m_finishTimer->isActive()) m_finishTimer->start({});
    }
  }
  m_fonts->shapingTime().unlimit();
  painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  paintPreedit(painter);
  if (m_isDimmed) {
    QColor veil = QColor::fromRgb(m_colors.background);
    veil.setAlpha(kDimAlpha);
    painter.setClipping(false);
    painter.resetTransform();
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(viewport()->rect(), veil);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
  }
  if (m_flashTimer.isActive()) {
    QColor flash = QColor::fromRgba(m_colors.text);
    flash.setAlpha(kFlashAlpha);
    painter.setClipping(false);
    painter.resetTransform();
    painter.fillRect(viewport()->rect(), flash);
  }
}

void TextCanvas::paintRow(RowPainter& painter, std::size_t row) {
  const RowKey& key = m_frame.rows[row];
  painter.paint(*m_rows[row], key.selected,
                key.isBlinkedAway ? RowPainter::Blinking::Hidden : RowPainter::Blinking::Shown,
                key.cursor ? key.cursor->columns.end : CanvasColumn());
  if (!key.link.empty()) painter.paintLink(*m_rows[row], key.link);
  paintMarks(painter, row);
  if (key.cursor) painter.paintCursor(*m_rows[row], *key.cursor);
  paintLabels(painter, row);
}

// Rows that are marked as unfinished in the frame are painted again with the next one in any case.
void TextCanvas::finishRows() {
  std::vector<std::size_t> rows;
  for (std::size_t row = 0; row < m_frame.rows.size(); ++row) {
    if (std::exchange(m_frame.rows[row].isUnfinished, false)) rows.push_back(row);
  }
  updateRows(rows);
}

// Text that is being composed stands at the cursor, underlined, in the view whatever its length.
void TextCanvas::paintPreedit(QPainter& painter) {
  if (m_preedit.isEmpty()) return;
  const CellMetrics& cell = m_fonts->metrics();
  const double scale = m_fonts->scale();
  const QRectF caret = inputMethodQuery(Qt::ImCursorRectangle).toRectF();
  QRectF at(caret.x() * scale, caret.y() * scale, caret.width() * scale, caret.height() * scale);
  QFont font = CanvasFonts::fontFor(m_fonts->font(), m_fonts->font().size * scale);
  font.setUnderline(true);
  painter.setClipping(false);
  painter.setFont(font);
  const double width = QFontMetricsF(font).horizontalAdvance(m_preedit);
  if (m_cursor) at.moveLeft(std::max(std::min(at.left(), viewport()->width() * scale - width), 0.0));
  painter.fillRect(QRectF(at.left(), at.top(), width, cell.height.toDouble()), QColor::fromRgba(m_colors.background));
  painter.setPen(QColor::fromRgba(m_colors.text));
  painter.drawText(QPointF(at.left(), at.top() + cell.baseline.toDouble()), m_preedit);
}

// The timer runs only while something in view blinks, and the desktop lets cursors blink.
void TextCanvas::updateBlinking() {
  const bool cursorBlinks = m_cursor && m_cursor->isShown && m_cursor->blinks && hasFocus();
  const bool textBlinks = std::ranges::any_of(m_rows, [](const auto& row) { return row->blinks; });
  const int period = QApplication::styleHints()->cursorFlashTime();
  if (period <= 0 || !(cursorBlinks || textBlinks)) {
    m_blinkTimer.stop();
    if (m_blinkedAway) m_pacer.request();
    m_blinkedAway = false;
  } else if (!m_blinkTimer.isActive()) {
    m_blinkTimer.start(period / 2);
  }
}

void TextCanvas::setDimmed(bool dimmed) {
  if (std::exchange(m_isDimmed, dimmed) != dimmed) viewport()->update();
}

void TextCanvas::flash() {
  m_flashTimer.start(kFlashTime);
  viewport()->update();
}

}  // namespace zolt
