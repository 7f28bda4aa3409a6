#pragma once

#include <QPoint>
#include <QSize>
#include <Qt>

#include "vt/input/Mouse.h"

namespace zolt {

/// The button; None for buttons that the engine does not number.
vt::MouseButton translateButton(Qt::MouseButton button);

/// The button of a wheel that was turned by `steps` as in `WheelSteps`; None for 0.
vt::MouseButton wheelButton(Qt::Orientation orientation, int steps);

/// Turns a wheel's or a touch pad's movements into whole steps and keeps the rest for the next, for both directions on
/// their own. The rest is dropped when the direction changes, and when the unit does. A value.
class WheelSteps {
 public:
  /// QWheelEvent::angleDelta(), in eighths of a degree, of which a notch has 120. `stepsPerNotch` > 0. The result is
  /// signed as the delta: positive is away from the user, and to the left.
  QPoint addAngle(QPoint eighths, int stepsPerNotch = 1);
  /// QWheelEvent::pixelDelta(), which is preferred where it is not null. `pixelsPerStep` is not empty, usually a cell.
  QPoint addPixels(QPoint pixels, QSize pixelsPerStep);

  void reset() { *this = {}; }

 private:
  struct Axis {
    qint64 rest = 0;  // steps times `unitsPerStep`
    qint64 unitsPerStep = 0;

    int add(qint64 units, qint64 perStep);
  };

  Axis m_horizontal;
  Axis m_vertical;
  int m_stepsPerNotch = 0;  // 0: pixels
};

}  // namespace zolt
