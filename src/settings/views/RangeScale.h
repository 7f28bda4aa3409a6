#pragma once

#include <cmath>

#include "controls/SliderScale.h"
#include "settings/Config.h"

namespace zolt {

/// The scale of a slider for a setting's range.
inline SliderScale scaleOf(const Config::Range& range) {
  // Steps per 1 of a continuous range: finer than a pixel on any screen.
  constexpr int kContinuousParts = 10000;
  constexpr int kContinuousKeyStep = 100;
  const bool isContinuous = range.step == 0;
  const int parts = isContinuous ? kContinuousParts : static_cast<int>(std::lround(1 / range.step));
  return {.partsOfOne = parts,
          .first = static_cast<int>(std::lround(range.first * parts)),
          .last = static_cast<int>(std::lround(range.last * parts)),
          .keyStep = isContinuous ? kContinuousKeyStep : 1};
}

}  // namespace zolt
