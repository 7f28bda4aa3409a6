#pragma once

#include <chrono>

#include "platform/Clock.h"

namespace zolt {

/// How long clusters may still be shaped: a screen full of new ones takes Qt a second, in which no key would be shown.
/// Only the shaping counts, so that each frame makes at least one picture. Main thread.
class ShapingTime {
 public:
  /// From now on shaping may take `limit` more, and what is begun within it. `clock` must outlive it.
  void limit(Clock& clock, std::chrono::microseconds limit) {
    m_clock = &clock;
    m_left = limit;
  }
  /// From now on shaping may take as long as it takes, as at first.
  void unlimit() { m_clock = nullptr; }

  bool isOver() const { return m_clock != nullptr && m_left.count() <= 0; }

  /// Calls `shape` and counts the time it takes.
  template <class Shape>
  auto spend(Shape shape) {
    if (m_clock == nullptr) return shape();
    const Clock::TimePoint begin = m_clock->now();
    auto shaped = shape();
    m_left -= std::chrono::duration_cast<std::chrono::microseconds>(m_clock->now() - begin);
    return shaped;
  }

 private:
  Clock* m_clock = nullptr;  // null: there is no limit
  std::chrono::microseconds m_left{0};
};

}  // namespace zolt
