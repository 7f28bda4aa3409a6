#pragma once

#include <QAccessibleWidget>

namespace zolt {

class TextCanvas;

/// A text canvas as screen readers see it: the rows in view, as text with an LF between two rows.
///
/// Offsets count UTF-16 code units from the first character in view: a history has more than an `int` can count. The
/// caret is the cursor; a text without one has it at its end, where new output appears. Main thread.
class CanvasAccessible : public QAccessibleWidget, public QAccessibleTextInterface {
 public:
  explicit CanvasAccessible(TextCanvas& canvas);

  /// Installs the accessibility factory for text canvases; call it before the first one is created.
  static void install();

  void* interface_cast(QAccessible::InterfaceType type) override;
  QAccessible::State state() const override;
  QString text(QAccessible::Text kind) const override;

  int characterCount() const override;
  QString text(int startOffset, int endOffset) const override;
  QString textBeforeOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                           int* endOffset) const override;
  QString textAtOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                       int* endOffset) const override;
  QString textAfterOffset(int offset, QAccessible::TextBoundaryType boundary, int* startOffset,
                          int* endOffset) const override;
  QRect characterRect(int offset) const override;
  int offsetAtPoint(const QPoint& point) const override;
  int cursorPosition() const override;
  void setCursorPosition(int) override {}  // the program's
  int selectionCount() const override;
  void selection(int selectionIndex, int* startOffset, int* endOffset) const override;
  void addSelection(int startOffset, int endOffset) override;
  void removeSelection(int selectionIndex) override;
  void setSelection(int selectionIndex, int startOffset, int endOffset) override;
  void scrollToSubstring(int, int) override {}  // all of the text is in view
  QString attributes(int offset, int* startOffset, int* endOffset) const override;

 private:
  TextCanvas& m_canvas;
};

}  // namespace zolt
