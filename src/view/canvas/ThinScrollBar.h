#pragma once

#include <QScrollBar>
#include <QTimer>
#include <vector>

#include "view/canvas/CanvasMarks.h"

namespace zolt {

/// A scroll bar that is seen only while it is of use: when there is something to scroll and the user scrolls or is near
/// it.
///
/// Its place stays reserved, so that text never wraps anew because it comes or goes.
class ThinScrollBar : public QScrollBar {
  Q_OBJECT

 public:
  /// Its width, in logical pixels.
  static constexpr int breadth = 12;

  explicit ThinScrollBar(QWidget* parent);

  QSize sizeHint() const override;
  /// Shows the thumb for a moment.
  void flash();
  /// Shows places of the text, in order, until told otherwise.
  void setMarks(std::vector<BarMark> marks);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;
  void sliderChange(SliderChange change) override;

 private:
  QRect thumb() const;
  void paintMarks(QPainter& painter) const;

  std::vector<BarMark> m_marks;
  QTimer m_fade;
  bool m_hovered = false;
};

}  // namespace zolt
