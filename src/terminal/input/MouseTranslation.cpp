#include "terminal/input/MouseTranslation.h"

#include <algorithm>
#include <limits>

namespace zolt {

namespace {

using vt::MouseButton;

constexpr int kEighthsPerNotch = 120;

struct ButtonRow {
  Qt::MouseButton qtButton;
  MouseButton button;
};

constexpr ButtonRow kButtons[] = {
    {Qt::LeftButton, MouseButton::Left},       {Qt::MiddleButton, MouseButton::Middle},
    {Qt::RightButton, MouseButton::Right},     {Qt::BackButton, MouseButton::Back},
    {Qt::ForwardButton, MouseButton::Forward}, {Qt::ExtraButton3, MouseButton::Button10},
    {Qt::ExtraButton4, MouseButton::Button11},
};

}  // namespace

vt::MouseButton translateButton(Qt::MouseButton button) {
  const auto* row = std::ranges::find(kButtons, button, &ButtonRow::qtButton);
  return row == std::end(kButtons) ? MouseButton::None : row->button;
}

vt::MouseButton wheelButton(Qt::Orientation orientation, int steps) {
  if (steps == 0) return MouseButton::None;
  if (orientation == Qt::Vertical) return steps > 0 ? MouseButton::WheelUp : MouseButton::WheelDown;
  return steps > 0 ? MouseButton::WheelLeft : MouseButton::WheelRight;
}

int WheelSteps::Axis::add(qint64 units, qint64 perStep) {
  const bool turnsBack = (units < 0 && rest > 0) || (units > 0 && rest < 0);
  if (turnsBack || perStep != unitsPerStep) rest = 0;
  unitsPerStep = perStep;
  rest += units;
  const qint64 steps = rest / perStep;
  rest %= perStep;
  using Limits = std::numeric_limits<int>;
  return static_cast<int>(std::clamp<qint64>(steps, Limits::min(), Limits::max()));
}

QPoint WheelSteps::addAngle(QPoint eighths, int stepsPerNotch) {
  if (m_stepsPerNotch != stepsPerNotch) reset();
  m_stepsPerNotch = stepsPerNotch;
  const auto units = [&](int delta) { return static_cast<qint64>(delta) * stepsPerNotch; };
  return {m_horizontal.add(units(eighths.x()), kEighthsPerNotch), m_vertical.add(units(eighths.y()), kEighthsPerNotch)};
}

QPoint WheelSteps::addPixels(QPoint pixels, QSize pixelsPerStep) {
  if (m_stepsPerNotch != 0) reset();
  return {m_horizontal.add(pixels.x(), pixelsPerStep.width()), m_vertical.add(pixels.y(), pixelsPerStep.height())};
}

}  // namespace zolt
