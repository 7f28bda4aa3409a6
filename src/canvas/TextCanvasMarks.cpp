// Search results: marked in the text and in the scroll bar, and scrolled into view.
#include <algorithm>

#include "canvas/CanvasMarks.h"
#include "canvas/RowPainter.h"
#include "canvas/TextCanvas.h"
#include "controls/ThinScrollBar.h"

namespace zolt {

namespace {

// Both bright, with black text: readable whatever colour the text had.
constexpr QRgb kFound = 0xFFCFB04A;
constexpr QRgb kCurrent = 0xFFFF7F24;
constexpr QRgb kMarkedText = 0xFF000000;
// A match that is scrolled to appears one such part of the view down.
constexpr int kRevealedAt = 3;

}  // namespace

void TextCanvas::setMarks(CanvasMarks* marks) {
  m_marks = marks;
  marksChanged();
}

void TextCanvas::marksChanged() {
  m_pacer.request();
}

void TextCanvas::markScrollBar(const std::vector<TextRange>& ranges) {
  std::vector<BarMark> marks;
  marks.reserve(ranges.size());
  sync();
  const auto rows = static_cast<double>(m_source->rowCount());
  const auto place = [&](TextPosition position) {
    return static_cast<double>(m_source->roughRowAt(position).value) / rows;
  };
  for (const TextRange& range : ranges) {
    marks.push_back({.begin = place(range.begin), .end = place(range.end)});
  }
  m_bar->setMarks(std::move(marks));
}

void TextCanvas::reveal(TextRange range, LogicalPixels covered) {
  sync();
  if (scrollModel().maximum() == DevicePixels(0)) return;
  const CellMetrics& cell = m_fonts->metrics();
  const DevicePixels height = deviceHeight();
  const DevicePixels top = cell.topOf(m_source->rowAt(range.begin)) + toDevice(inset);
  const DevicePixels offset = offsetNow();
  if (top >= offset + toDevice(covered) && top + cell.height <= offset + height) return;
  // Asked again: fetching rows there may have corrected their numbers.
  scrollTo(cell.topOf(m_source->rowAt(range.begin)) - std::max(height / kRevealedAt, toDevice(covered)));
}

TextRange TextCanvas::rangeInView() {
  makeFrameNow();
  if (m_rows.empty()) return {};
  return {.begin = m_rows.front()->range.begin, .end = m_rows.back()->range.end};
}

void TextCanvas::paintMarks(RowPainter& painter, std::size_t row) {
  const RowKey& key = m_frame.rows[row];
  for (const ColumnRange found : key.found) {
    painter.paintMark(*m_rows[row], found, kFound, kMarkedText);
  }
  if (!key.current.empty()) painter.paintMark(*m_rows[row], key.current, kCurrent, kMarkedText);
}

}  // namespace zolt
