#pragma once

#include <QColor>
#include <QPointer>
#include <QTabBar>
#include <QTimer>
#include <cstdint>

#include "panes/TabDrag.h"
#include "panes/TabMarks.h"

class QLineEdit;

namespace zolt {

/// The tabs of a window: as wide as there is room for, with title and marks. They are reordered by dragging; dragged
/// out of the strip, a tab can be dropped on another strip or wherever a drop is accepted; dropped nowhere it is torn
/// off. A double click renames, a middle click closes. Never takes the keyboard, except while a name is being edited.
/// Main thread.
class TabStrip : public QTabBar {
  Q_OBJECT

 public:
  explicit TabStrip(QWidget* parent = nullptr);

  /// Adds and removes tabs, and switches to one; each ends a reordering that the user is in the middle of.
  void addTabAt(int before);
  void removeTabAt(int index);
  void turnTo(int index);
  /// What a tab is called; `addition` is shown behind it, but is no part of the name when that is edited.
  void setTitle(int index, const QString& title, const QString& addition = {});
  QString title(int index) const { return data(index).title; }
  QString shownTitle(int index) const { return data(index).title + data(index).addition; }
  void setMarks(int index, const TabMarks& marks);
  TabMarks marks(int index) const { return data(index).marks; }
  /// A number that a tab of this strip keeps as long as it is here, and no other ever has; and where that tab is, -1 if
  /// it is gone.
  std::uint64_t idOf(int index) const { return data(index).id; }
  int indexOf(std::uint64_t id) const;
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
  void tabInserted(int index) override;
  void tabRemoved(int index) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  friend class TabStyle;

  struct TabData {
    std::uint64_t id = 0;
    QString title;
    QString addition;
    TabMarks marks;
  };
  TabData data(int index) const;
  void setData(int index, const TabData& data);
  void endReordering();
  QPixmap pictureOf(int index);
  QRect closeRect(const QRect& tab) const;
  void paintTab(QPainter& painter, const QRect& rect, int index) const;
  int gapAt(QPoint point) const;
  void showGap(int gap);
  void dragOut(QPoint at);
  void placeEditor();
  void endEditing(bool keep);

  QColor m_ground = Qt::black;
  int m_hovered = -1;
  bool m_closeIsHovered = false;
  int m_pressedClose = -1;
  int m_pressed = -1;  // dragging this one
  QPoint m_pressedAt;
  int m_pressedMiddle = -1;
  int m_gap = -1;  // where a dragged tab would come to stand
  QTimer m_restTimer;
  int m_restsOn = -1;  // a dragged tab, on this one
  QPointer<QLineEdit> m_editor;
  std::uint64_t m_edited = 0;
};

}  // namespace zolt
