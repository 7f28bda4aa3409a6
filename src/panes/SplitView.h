#pragma once

#include <QColor>
#include <QWidget>
#include <map>
#include <optional>
#include <vector>

#include "panes/SplitLayout.h"

namespace zolt {

/// Widgets as the panes of a split, with dividers that can be dragged. One pane can be zoomed: it alone is shown until
/// any other is split, taken or brought into the focus. Main thread.
class SplitView : public QWidget {
  Q_OBJECT

 public:
  /// `first` fills the view. Panes are children of the view while they are in it.
  explicit SplitView(QWidget& first, QWidget* parent = nullptr);
  /// Panes that stand as in `layout`, where each is named by its number among `panes`.
  SplitView(const std::vector<QWidget*>& panes, const SplitLayout& layout, QWidget* parent = nullptr);

  /// From left to right and from the top down. Empty only after the last one was taken.
  std::vector<QWidget*> panes() const;
  const SplitLayout& layoutOfPanes() const { return m_layout; }
  PaneId idOf(const QWidget& pane) const;

  /// `added` takes half of the room of `beside`, which is in the view.
  void split(const QWidget& beside, Direction side, QWidget& added);
  /// Takes all panes of `others`, which stand to each other as they did in it. It is empty then.
  void split(const QWidget& beside, Direction side, SplitView& others);
  /// Takes a pane out, hidden and without a parent; the caller owns it.
  void take(QWidget& pane);
  /// Puts a pane that was taken back where it was: `before` is the layout from before, `id` its name there. False, and
  /// nothing happens, if other panes have come or gone since.
  bool putBack(QWidget& pane, PaneId id, const SplitLayout& before);
  void swap(const QWidget& one, const QWidget& other);
  void equalise();

  QWidget* neighbour(const QWidget& pane, Direction direction) const;
  bool moveEdge(const QWidget& pane, Direction direction, int pixels);

  /// Shows only `pane`; null: all of them.
  void setZoomed(QWidget* pane);
  QWidget* zoomed() const { return m_zoomed; }

  /// What the dividers' ground is like.
  void setGround(const QColor& ground);

 Q_SIGNALS:
  /// The user has grabbed a divider; it has been released.
  void dividerGrabbed();
  void dividerReleased();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  PaneSize wholeSize() const { return {.width = width(), .height = height()}; }
  QWidget* widgetOf(std::optional<PaneId> pane) const;
  void init();
  void adopt(QWidget& pane, PaneId id);
  void placePanes();
  void rearrange();
  void releaseDivider();
  std::optional<SplitLayout::Divider> dividerAt(QPoint point) const;
  void hover(QPoint point);

  std::map<PaneId, QWidget*> m_panes;
  SplitLayout m_layout;
  QWidget* m_zoomed = nullptr;  // one of the panes
  QColor m_ground = Qt::black;
  std::optional<SplitLayout::Divider> m_hovered;
  std::optional<SplitLayout::Divider> m_grabbed;
  int m_grabbedAt = 0;  // pixels from its beginning
};

}  // namespace zolt
