#include "canvas/CanvasAccessible.h"

#include <algorithm>

#include "canvas/TextCanvas.h"

namespace zolt {

namespace {

QAccessibleInterface* makeInterface(const QString&, QObject* object) {
  auto* canvas = qobject_cast<TextCanvas*>(object);
  return canvas == nullptr ? nullptr : new CanvasAccessible(*canvas);
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
  return static_cast<int>(m_canvas.visibleText().size());
}

QString CanvasAccessible::text(int startOffset, int endOffset) const {
  return m_canvas.visibleText().mid(startOffset, endOffset - startOffset);
}

QRect CanvasAccessible::characterRect(int offset) const {
  const QRect inViewport = m_canvas.rectOf(m_canvas.positionOfVisible(offset)).toAlignedRect();
  return {m_canvas.viewport()->mapToGlobal(inViewport.topLeft()), inViewport.size()};
}

int CanvasAccessible::offsetAtPoint(const QPoint& point) const {
  const QPoint inViewport = m_canvas.viewport()->mapFromGlobal(point);
  if (!m_canvas.viewport()->rect().contains(inViewport)) return -1;
  return m_canvas.visibleOffsetOf(m_canvas.positionAt(inViewport));
}

// New output appears at the end, so the caret is reported there.
int CanvasAccessible::cursorPosition() const {
  return characterCount();
}

int CanvasAccessible::selectionCount() const {
  return m_canvas.selection().empty() ? 0 : 1;
}

void CanvasAccessible::selection(int selectionIndex, int* startOffset, int* endOffset) const {
  *startOffset = *endOffset = 0;
  if (selectionIndex != 0 || m_canvas.selection().empty()) return;
  const TextRange range = m_canvas.selection().range();
  *startOffset = m_canvas.visibleOffsetOf(range.begin);
  *endOffset = m_canvas.visibleOffsetOf(range.end);
}

void CanvasAccessible::addSelection(int startOffset, int endOffset) {
  setSelection(0, startOffset, endOffset);
}

void CanvasAccessible::removeSelection(int selectionIndex) {
  setSelection(selectionIndex, 0, 0);
}

void CanvasAccessible::setSelection(int selectionIndex, int startOffset, int endOffset) {
  if (selectionIndex != 0) return;
  m_canvas.select({.begin = m_canvas.positionOfVisible(startOffset), .end = m_canvas.positionOfVisible(endOffset)});
}

QString CanvasAccessible::attributes(int, int* startOffset, int* endOffset) const {
  *startOffset = 0;
  *endOffset = characterCount();
  return {};
}

}  // namespace zolt
