#include "canvas/ScrollModel.h"

#include <cstdint>

namespace zolt {

namespace {

constexpr std::int64_t kLargestBarRange = std::int64_t{1} << 30;  // steps

}  // namespace

DevicePixels ScrollModel::clamped(DevicePixels offset) const {
  return std::clamp(offset, DevicePixels(0), maximum());
}

DevicePixels ScrollModel::pixelsPerStep() const {
  return maximum() / kLargestBarRange + DevicePixels(1);
}

int ScrollModel::barMaximum() const {
  return barValue(maximum());
}

int ScrollModel::barPageStep() const {
  return static_cast<int>(std::max<std::int64_t>(viewportHeight / pixelsPerStep(), 1));
}

int ScrollModel::barValue(DevicePixels offset) const {
  const DevicePixels step = pixelsPerStep();
  return static_cast<int>((clamped(offset) + step - DevicePixels(1)) / step);
}

DevicePixels ScrollModel::offsetFor(int barValue) const {
  return clamped(barValue * pixelsPerStep());
}

}  // namespace zolt
