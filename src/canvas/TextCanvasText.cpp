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
      std::size_t row = m_rows.empty() ? 0 : m_rows.size() - 1;
      CanvasColumn column = m_rows.empty() ? CanvasColumn() : m_rows.back()->end;
      if (m_cursor && m_cursor->row >= m_firstRow && m_cursor->row - m_firstRow < std::ssize(m_rows)) {
        row = static_cast<std::size_t>(m_cursor->row - m_firstRow);
        column = m_cursor->columns.begin;
      }
      return rectOf(row, {.begin = column, .end = column + 1}).toRect();
    }
    case Qt::ImCurrentSelection:
      return m_source->roughSize(m_selection.range()) <= kMaxForInputMethods ? selectedText() : QString();
    default:
      return QAbstractScrollArea::inputMethodQuery(query);
  }
}

TextInView TextCanvas::textInView() const {
  return {m_rows, [this](TextRange range) { return textOf(range); }};
}

int TextCanvas::caretIn(const TextInView& view) const {
  if (!m_cursor) return view.length();
  const std::int64_t row = m_cursor->row - m_firstRow;
  if (row < 0) return 0;
  if (row >= std::ssize(m_rows)) return view.length();
  const auto index = static_cast<std::size_t>(row);
  return view.offsetOf({.row = index, .position = m_rows[index]->positionAt(m_cursor->columns.begin)});
}

std::vector<OffsetRange> TextCanvas::selectionIn(const TextInView& view) const {
  std::vector<OffsetRange> parts;
  const auto add = [&](OffsetRange part) {
    if (!part.empty()) parts.push_back(part);
  };
  if (m_selection.isRectangle()) {
    for (std::size_t row = 0; row < view.rowCount(); ++row) {
      const ColumnRange columns = selectedColumns(view.row(row));
      add({.begin = view.offsetOf({.row = row, .position = view.row(row).positionAt(columns.begin)}),
           .end = view.offsetOf({.row = row, .position = view.row(row).positionAt(columns.end)})});
    }
  } else {
    add(view.offsetsOf(m_selection.range()));
  }
  return parts;
}

}  // namespace zolt
