#pragma once

#include <QColor>
#include <QPointer>
#include <QTabBar>

#include "panes/TabDrag.h"
#include "panes/TabMarks.h"

class QLineEdit;

namespace zolt {

/// The tabs of a window: as wide as there is room for, with title and marks. They are reordered by dragging; dragged
/// out of the strip, a tab can be dropped on another strip or wherever a drop is accepted; dropped nowhere it is torn
/// off. A double click renames, a middle click closes. Never takes the keyboard, but while a name is being edited.
/// Main thread.
class TabStrip : public QTabBar {
  Q_OBJECT

 public:
  explicit TabStrip(QWidget* parent = nullptr);

  void setTitle(int index, const QString& title);
  void setMarks(int index, const TabMarks& marks);
  TabMarks marks(int index) const { return tabData(index).value<TabMarks>(); }
  /// The terminal's background, which the current tab continues.
  void setGround(const QColor& ground);
  QColor ground() const { return m_ground; }

  /// Lets the user edit the name of a tab in place: Return keeps it, Escape does not.
  void editName(int index);

 Q_SIGNALS:
  void closeWanted(int index);
  /// The user named a tab; an empty name takes an earlier one back.
  void named(int index, const QString& name);
  /// A tab, of this or another strip, was dropped before the tab `before`.
  void tabDropped(const zolt::TabDrag& tab, int before);
  /// A tab was dropped outside of all windows, with the pointer there.
  void tornOff(int index, QPoint at);
  void menuWanted(int index, QPoint at);

 protected:
  QSize tabSizeHint(int index) const override;
  QSize minimumTabSizeHint(int index) const override;
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;
  void dragMoveEvent(QDragMoveEvent* event) override;
  void dragLeaveEvent(QDragLeaveEvent* event) override;
  void dropEvent(QDropEvent* event) override;
  void tabLayoutChange() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  friend class TabStyle;

  QRect closeRect(const QRect& tab) const;
  void paintTab(QPainter& painter, const QRect& rect, int index) const;
  void updateWords(int index);
  int gapAt(QPoint point) const;
  void showGap(int gap);
  void dragOut(QPoint at);
  void endEditing(bool keep);

  QColor m_ground = Qt::black;
  int m_hovered = -1;
  bool m_closeIsHovered = false;
  int m_pressedClose = -1;
  int m_pressed = -1;  // dragging this one
  QPoint m_pressedAt;
  int m_gap = -1;  // where a dragged tab would come to stand
  QPointer<QLineEdit> m_editor;
  int m_edited = -1;
};

}  // namespace zolt
