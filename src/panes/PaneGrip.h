#pragma once

#include <QPoint>
#include <QWidget>
#include <optional>

namespace zolt {

/// What a pane is dragged out of its split by: a handle in the middle of its upper edge, which is there only while the
/// pointer rests at that edge. Main thread.
class PaneGrip : public QWidget {
  Q_OBJECT

 public:
  static constexpr QSize size{44, 12};

  explicit PaneGrip(QWidget* parent);

  /// Shows the grip at the upper edge of `pane`, an area of the parent.
  void showOn(const QRect& pane);

 Q_SIGNALS:
  /// The user drags it.
  void dragged();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  std::optional<QPoint> m_pressedAt;
};

}  // namespace zolt
