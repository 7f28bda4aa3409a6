#include "canvas/CanvasAccessible.h"

#include <iterator>
#include <optional>
#include <vector>

#include "canvas/AccessibleLook.h"
#include "canvas/TextCanvas.h"

namespace zolt {

namespace {

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  auto* canvas = qobject_cast<TextCanvas*>(object);
  return canvas == nullptr ? nullptr : new CanvasAccessible(*canvas);
}

// Qt finds words and sentences in the text. Characters are those of the cells, and lines are rows.
bool isOurs(QAccessible::TextBoundaryType boundary) {
  return boundary == QAccessible::CharBoundary || boundary == QAccessible::LineBoundary ||
         boundary == QAccessible::ParagraphBoundary;
}

// `offset`: -1 for the end of the text.
OffsetRange unitAt(const TextInView& view, int offset, QAccessible::TextBoundaryType boundary) {
  if (offset == -1) offset = view.length();
  return boundary == QAccessible::CharBoundary ? view.characterAt(offset) : view.rowAt(offset);
}

QString give(const TextInView& view, OffsetRange range, int* startOffset, int* endOffset) {
  *startOffset = range.begin;
  *endOffset = range.end;
  return view.text().mid(range.begin, range.end - range.begin);
}

}  // namespace

CanvasAccessible::CanvasAccessible(TextCanvas& canvas)
    : QAccessibleWidget(&canvas, QAccessible::Terminal), m_canvas(canvas) {}

void CanvasAccessible::install() {
  QAccessible::installFactory(makeInterface);
}

void* CanvasAccessible::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TextInterface) return static_cast<QAccessibleTextInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

QAccessible::State CanvasAccessible::state() const {
  QAccessible::State state = QAccessibleWidget::state();
  state.readOnly = true;
  state.multiLine = true;
  state.selectableText = true;
  return state;
}

QString CanvasAccessible::text(QAccessible::Text kind) const {
  return kind == QAccessible::Value ? m_canvas.visibleText() : QAccessibleWidget::text(kind);
}

int CanvasAccessible::characterCount() const {
  return m_canvas.textInView().length();
}

QString CanvasAccessible::text(int startOffset, int endOffset) const {
  return m_canvas.visibleText().mid(startOffset, endOffset - startOffset);
}

QString CanvasAccessible::textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                           int* endOffset) const {
  if (!isOurs(boundary)) return QAccessibleTextInterface::textBeforeOffset(offset, boundary, startOffset, endOffset);
  const TextInView view = m_canvas.textInView();
  const int begin = unitAt(view, offset, boundary).begin;
  return give(view, begin > 0 ? unitAt(view, begin - 1, boundary) : OffsetRange(), startOffset, endOffset);
}

QString CanvasAccessible::textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                       int* endOffset) const {
  if (!isOurs(boundary)) return QAccessibleTextInterface::textAtOffset(offset, boundary, startOffset, endOffset);
  const TextInView view = m_canvas.textInView();
  return give(view, unitAt(view, offset, boundary), startOffset, endOffset);
}

QString CanvasAccessible::textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                                          int* endOffset) const {
  if (!isOurs(boundary)) return QAccessibleTextInterface::textAfterOffset(offset, boundary, startOffset, endOffset);
  const TextInView view = m_canvas.textInView();
  const int end = unitAt(view, offset, boundary).end;
  const OffsetRange none{.begin = view.length(), .end = view.length()};
  return give(view, end < view.length() ? unitAt(view, end, boundary) : none, startOffset, endOffset);
}

QRect CanvasAccessible::characterRect(int offset) const {
  const TextInView view = m_canvas.textInView();
  if (view.rowCount() == 0) return {};
  const RowPlace place = view.placeOf(offset);
  const RowContent& row = view.row(place.row);
  ColumnRange columns = row.columnsOf(row.characterAt(place.position));
  if (columns.empty()) columns = {.begin = row.columnOf(place.position), .end = row.columnOf(place.position) + 1};
  const QRect inViewport = m_canvas.rectOf(place.row, columns).toAlignedRect();
  return {m_canvas.viewport()->mapToGlobal(inViewport.topLeft()), inViewport.size()};
}

int CanvasAccessible::offsetAtPoint(const QPoint& point) const {
  const std::optional<RowPlace> place = m_canvas.characterAt(m_canvas.viewport()->mapFromGlobal(point));
  return place ? m_canvas.textInView().offsetOf(*place) : -1;
}

int CanvasAccessible::cursorPosition() const {
  return m_canvas.caretIn(m_canvas.textInView());
}

int CanvasAccessible::selectionCount() const {
  return static_cast<int>(m_canvas.selectionIn(m_canvas.textInView()).size());
}

void CanvasAccessible::selection(int selectionIndex, int* startOffset, int* endOffset) const {
  const std::vector<OffsetRange> parts = m_canvas.selectionIn(m_canvas.textInView());
  const bool isThere = selectionIndex >= 0 && selectionIndex < std::ssize(parts);
  const OffsetRange part = isThere ? parts[static_cast<std::size_t>(selectionIndex)] : OffsetRange();
  *startOffset = part.begin;
  *endOffset = part.end;
}

void CanvasAccessible::addSelection(int startOffset, int endOffset) {
  setSelection(0, startOffset, endOffset);
}

void CanvasAccessible::removeSelection(int selectionIndex) {
  if (selectionIndex >= 0 && selectionIndex < selectionCount()) m_canvas.clearSelection();
}

void CanvasAccessible::setSelection(int selectionIndex, int startOffset, int endOffset) {
  const TextInView view = m_canvas.textInView();
  if (selectionIndex != 0 || view.rowCount() == 0) return;
  m_canvas.select({.begin = view.placeOf(startOffset).position, .end = view.placeOf(endOffset).position});
}

QString CanvasAccessible::attributes(int offset, int* startOffset, int* endOffset) const {
  const TextInView view = m_canvas.textInView();
  const CellLook plain{.foreground = m_canvas.colors().text};
  *startOffset = *endOffset = view.length();
  if (offset < 0 || offset >= view.length()) return accessibleAttributes(plain, m_canvas.colors());
  const RowPlace place = view.placeOf(offset);
  const RowContent& row = view.row(place.row);
  if (place.position >= row.range.end) {  // a line end
    *startOffset = view.offsetOf(place);
    *endOffset = *startOffset + 1;
    return accessibleAttributes(plain, m_canvas.colors());
  }
  const LookRun run = lookRunAt(row, row.columnOf(place.position), plain);
  *startOffset = view.offsetOf({.row = place.row, .position = row.positionAt(run.columns.begin)});
  *endOffset = view.offsetOf({.row = place.row, .position = row.positionAt(run.columns.end)});
  return accessibleAttributes(run.look, m_canvas.colors());
}

}  // namespace zolt
