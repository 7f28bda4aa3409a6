#pragma once

#include <QSlider>

#include "controls/KeyboardFocus.h"
#include "controls/SliderScale.h"

namespace zolt {

/// A horizontal slider: a round knob on a thin track, filled up to the knob. A click on the track moves the knob there.
class Slider : public QSlider {
  Q_OBJECT

 public:
  explicit Slider(const SliderScale& scale, QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;
  /// The middle of the knob.
  QPointF knobCenter() const;

 Q_SIGNALS:
  /// The user moved the knob to `position`, or pressed it there: the value shown may have been out of range.
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
  double m_grip = 0;  // from the knob's centre to the pointer that holds it
};

}  // namespace zolt
