// The text in view for input methods and screen readers.
#include <QInputMethodEvent>
#include <algorithm>

#include "canvas/CanvasInput.h"
#include "canvas/TextCanvas.h"

namespace zolt {

namespace {

// Input methods ask for the selection in order to convert it again: never more than a few words.
constexpr std::uint64_t kMaxForInputMethods = 4096;  // characters

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
      // The candidate window opens at the cursor. A text without one: at the end of the last row in view, where the
      // next output will stand.
      const CellMetrics& cell = m_fonts->metrics();
      std::size_t row = m_rows.empty() ? 0 : m_rows.size() - 1;
      CanvasColumn column = m_rows.empty() ? CanvasColumn() : m_rows.back()->end;
      if (m_cursor && m_cursor->row >= m_firstRow && m_cursor->row - m_firstRow < std::ssize(m_rows)) {
        row = static_cast<std::size_t>(m_cursor->row - m_firstRow);
        column = m_cursor->columns.begin;
      }
      return toLogical({.x = toDevice(inset) + cell.leftOf(column), .y = m_frame.topOf(row)}, cell.width, cell.height)
          .toRect();
    }
    case Qt::ImCurrentSelection:
      return m_source->roughSize(m_selection.range()) <= kMaxForInputMethods ? selectedText() : QString();
    default:
      return QAbstractScrollArea::inputMethodQuery(query);
  }
}

QString TextCanvas::visibleText() const {
  QString text;
  for (const auto& row : m_rows) {
    if (row != m_rows.front()) text += QLatin1Char('\n');
    text += textOf(row->range);
  }
  return text;
}

TextPosition TextCanvas::positionOfVisible(int offset) const {
  for (const auto& row : m_rows) {
    const QString text = textOf(row->range);
    if (offset <= text.size()) {
      return row->range.begin + static_cast<std::uint64_t>(text.left(std::max(offset, 0)).toUtf8().size());
    }
    offset -= static_cast<int>(text.size()) + 1;
  }
  return m_rows.empty() ? TextPosition() : m_rows.back()->range.end;
}

int TextCanvas::visibleOffsetOf(TextPosition position) const {
  int offset = 0;
  for (const auto& row : m_rows) {
    if (position < row->range.begin)
      return std::max(offset - 1, 0);  // on the line end before the row, or above the view
    const bool last = row == m_rows.back();
    if (position < row->range.end || (last && position >= row->range.end)) {
      const TextRange before{.begin = row->range.begin, .end = std::min(position, row->range.end)};
      return offset + static_cast<int>(textOf(before).size());
    }
    offset += static_cast<int>(textOf(row->range).size()) + 1;
  }
  return offset;
}

}  // namespace zolt
