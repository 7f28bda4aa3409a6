#include "controls/SliderScale.h"

#include <cmath>

namespace zolt {

int SliderScale::positionOf(double value) const {
  const double position = value * partsOfOne;
  if (!(position > first)) return first;
  if (position >= last) return last;
  return static_cast<int>(std::lround(position));
}

}  // namespace zolt
