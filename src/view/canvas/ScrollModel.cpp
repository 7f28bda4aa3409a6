#include "view/canvas/ScrollModel.h"

#include <algorithm>

namespace zolt {

namespace {

constexpr Pixels kLargestBarRange = Pixels{1} << 30;

}  // namespace

Pixels ScrollModel::clamped(Pixels offset) const {
  return std::clamp<Pixels>(offset, 0, maximum());
}

Pixels ScrollModel::pixelsPerStep() const {
  return maximum() / kLargestBarRange + 1;
}

int ScrollModel::barMaximum() const {
  return barValue(maximum());
}

int ScrollModel::barPageStep() const {
  return static_cast<int>(std::max<Pixels>(viewportHeight / pixelsPerStep(), 1));
}

int ScrollModel::barValue(Pixels offset) const {
  const Pixels step = pixelsPerStep();
  return static_cast<int>((clamped(offset) + step - 1) / step);
}

Pixels ScrollModel::offsetFor(int barValue) const {
  return clamped(barValue * pixelsPerStep());
}

}  // namespace zolt
