#pragma once

#include <QSlider>

#include "controls/KeyboardFocus.h"
#include "controls/SliderScale.h"

namespace zolt {

/// A horizontal slider: a round knob on a thin track that is filled up to it. A click beside the knob brings it there.
class Slider : public QSlider {
  Q_OBJECT

 public:
  explicit Slider(const SliderScale& scale, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  /// The middle of the knob.
  QPointF knobCenter() const;

 Q_SIGNALS:
  /// The user put the knob at `position`, or used it where it was already: its value may be another, beyond the end.
  void chosen(int position);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  double span() const;
  void moveKnobTo(double x);

  KeyboardFocus m_focus{*this};
  double m_grip = 0;  // where on the knob it is held, from its middle
};

}  // namespace zolt
