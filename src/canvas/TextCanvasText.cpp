// The text in view for input methods and screen readers.
#include <QInputMethodEvent>
#include <algorithm>

#include "canvas/CanvasInput.h"
#include "canvas/TextCanvas.h"

namespace zolt {

namespace {

// Input methods ask for the selection in order to convert it again: never more than a few words.
constexpr std::uint64_t kMaxForInputMethods = 4096;  // characters

// Rows hold one character a position.
int lengthOf(const RowContent& row) {
  return static_cast<int>(row.range.length());
}

}  // namespace

void TextCanvas::inputMethodEvent(QInputMethodEvent* event) {
  m_preedit = event->preeditString();
  if (m_input != nullptr && !event->commitString().isEmpty()) m_input->textCommitted(event->commitString());
  viewport()->update();
  event->accept();
}

QVariant TextCanvas::inputMethodQuery(Qt::InputMethodQuery query) const {
  switch (query) {
    case Qt::ImEnabled:
      return true;
    case Qt::ImCursorRectangle: {
      // The candidate window opens at the end of the last row in view: where the next output will stand.
      const CellMetrics& cell = m_fonts->metrics();
      const CanvasColumn column = m_rows.empty() ? CanvasColumn() : m_rows.back().end;
      const DevicePixels top = m_frame.topOf(m_rows.empty() ? 0 : m_rows.size() - 1);
      return toLogical({.x = toDevice(inset) + cell.leftOf(column), .y = top}, cell.width, cell.height).toRect();
    }
    case Qt::ImCurrentSelection:
      return m_selection.range().length() <= kMaxForInputMethods ? selectedText() : QString();
    default:
      return QAbstractScrollArea::inputMethodQuery(query);
  }
}

QString TextCanvas::visibleText() const {
  QString text;
  for (const RowContent& row : m_rows) {
    if (&row != &m_rows.front()) text += QLatin1Char('\n');
    text += QString::fromStdString(m_source->text(row.range));
  }
  return text;
}

TextPosition TextCanvas::positionOfVisible(int offset) const {
  for (const RowContent& row : m_rows) {
    if (offset <= lengthOf(row)) return row.range.begin + static_cast<std::uint64_t>(std::max(offset, 0));
    offset -= lengthOf(row) + 1;
  }
  return m_rows.empty() ? TextPosition() : m_rows.back().range.end;
}

int TextCanvas::visibleOffsetOf(TextPosition position) const {
  int offset = 0;
  for (const RowContent& row : m_rows) {
    if (position < row.range.begin)
      return std::max(offset - 1, 0);  // on the line end before the row, or above the view
    const bool last = &row == &m_rows.back();
    if (position < row.range.end || (last && position >= row.range.end)) {
      return offset + static_cast<int>(std::min(position, row.range.end) - row.range.begin);
    }
    offset += lengthOf(row) + 1;
  }
  return offset;
}

}  // namespace zolt
