// What a mode of the keyboard shows in the text: labels, a cursor, and a view that stays where it is.
#include <algorithm>
#include <utility>

#include "canvas/RowPainter.h"
#include "canvas/TextCanvas.h"

namespace zolt {

namespace {

// Brighter than a search result: it is seen on either theme's ground, and black letters are read on it.
constexpr QRgb kLabel = 0xFFFFC531;
constexpr QRgb kLabelText = 0xFF000000;
constexpr QRgb kTypedText = 0xFF8F6A00;
// Of the user's own cursor.
constexpr QRgb kCaret = 0xFFFF7F24;
constexpr QRgb kCaretText = 0xFF000000;

}  // namespace

void TextCanvas::holdView(bool held) {
  if (m_isHeld == held) return;
  if (!held) {
    m_isHeld = false;
    m_atEnd = m_wasAtEnd || offsetNow() == scrollModel().maximum();
    m_pacer.request();
    return;
  }
  makeFrame();
  if (m_rows.empty()) return;
  m_isHeld = true;
  m_wasAtEnd = std::exchange(m_atEnd, false);
  m_anchor = m_rows.front()->range.begin;
  m_anchorDelta = toDevice(inset) - m_frame.firstRowTop;
}

void TextCanvas::setCaret(std::optional<TextPosition> place) {
  m_caret = place;
  m_pacer.request();
}

std::optional<CanvasCursor> TextCanvas::cursorShown() {
  if (!m_caret) return m_source->cursor();
  const CanvasRow number = m_source->rowAt(*m_caret);
  const std::shared_ptr<const RowContent> row = m_source->content(number);
  ColumnRange columns = row->columnsOf(row->characterAt(*m_caret));
  if (columns.empty()) columns = {.begin = row->columnOf(*m_caret), .end = row->columnOf(*m_caret) + 1};
  return CanvasCursor{.row = number, .columns = columns, .color = kCaret, .text = kCaretText};
}

void TextCanvas::scrollIntoView(TextPosition place) {
  sync();
  const DevicePixels height = m_fonts->metrics().height;
  const CanvasRow row = m_source->rowAt(place);
  const WholeRows rows = wholeRowsInView();
  const DevicePixels top = m_fonts->metrics().topOf(row);
  if (row < rows.first) {
    scrollTo(row == CanvasRow(0) ? DevicePixels(0) : top + toDevice(inset));
  } else if (row > rows.last) {
    scrollTo(top + height + 2 * toDevice(inset) - deviceHeight());
  }
}

TextCanvas::WholeRows TextCanvas::wholeRowsInView() {
  sync();
  const DevicePixels height = m_fonts->metrics().height;
  const DevicePixels top = offsetNow() - toDevice(inset);
  const DevicePixels end = top + deviceHeight();
  const CanvasRow last(m_source->rowCount() - 1);
  const CanvasRow first(std::max(top + height - DevicePixels(1), DevicePixels(0)) / height);
  return {.first = std::min(first, last), .last = std::clamp(CanvasRow(end / height - 1), std::min(first, last), last)};
}

void TextCanvas::setSelection(const Selection& selection) {
  m_selection = selection;
  m_pacer.request();
}

void TextCanvas::setLabels(std::vector<CanvasLabel> labels) {
  m_labels = std::move(labels);
  m_pacer.request();
}

std::vector<RowLabel> TextCanvas::labelsIn(const RowContent& row) const {
  std::vector<RowLabel> found;
  for (const CanvasLabel& label : m_labels) {
    const ColumnRange on = row.columnsOf(label.on);
    if (label.letters.empty() || on.empty()) continue;
    RowLabel shown{.on = on, .column = on.begin, .letters = {}, .typed = label.typed};
    // In the first row in view, if the text begins above it.
    const bool isFirst = row.range.begin <= label.on.begin || m_frame.rows.empty();
    if (isFirst) {
      shown.letters = label.letters;
      const int last = std::max(m_source->columns() - static_cast<int>(label.letters.size()), 0);
      shown.column = std::min(on.begin, CanvasColumn(last));
    }
    found.push_back(std::move(shown));
  }
  return found;
}

void TextCanvas::paintLabels(RowPainter& painter, std::size_t row) {
  for (const RowLabel& label : m_frame.rows[row].labels) {
    painter.paintLink(*m_rows[row], label.on);
  }
  for (const RowLabel& label : m_frame.rows[row].labels) {
    if (label.letters.empty()) continue;
    RowContent letters;
    CellLook look;
    look.weight = FontWeight::Bold;
    letters.addText(label.column, label.letters, look);
    const CanvasColumn end = label.column + static_cast<int>(label.letters.size());
    const CanvasColumn middle = label.column + static_cast<int>(label.typed);
    if (middle > label.column) painter.paintMark(letters, {.begin = label.column, .end = middle}, kLabel, kTypedText);
    if (end > middle) painter.paintMark(letters, {.begin = middle, .end = end}, kLabel, kLabelText);
  }
}

}  // namespace zolt
