#pragma once

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

#include "platform/Clock.h"

namespace zolt::test {

/// A clock that stands still until a test moves it.
class ManualClock : public Clock {
 public:
  TimePoint now() const override { return m_now; }
  std::unique_ptr<Timer> makeTimer(std::function<void()> elapsed) override {
    return std::make_unique<ManualTimer>(*this, std::move(elapsed));
  }

  /// Moves the time on by `duration`. Timers that are due on the way are called in order, each at its own time.
  void advance(std::chrono::microseconds duration) {
    const TimePoint end = m_now + duration;
    while (ManualTimer* next = nextDueBy(end)) {
      m_now = std::max(m_now, *next->due);
      next->due.reset();
      const auto elapsed = next->elapsed;  // a timer may be destroyed by what it calls
      elapsed();
    }
    m_now = end;
  }

  /// How long it is until the next timer is due, if one is running.
  std::optional<std::chrono::microseconds> untilNext() const {
    std::optional<std::chrono::microseconds> wait;
    for (const ManualTimer* timer : m_timers) {
      if (!timer->due) continue;
      const auto left = std::chrono::duration_cast<std::chrono::microseconds>(*timer->due - m_now);
      wait = wait ? std::min(*wait, left) : left;
    }
    return wait;
  }

 private:
  struct ManualTimer : Timer {
    ManualTimer(ManualClock& owner, std::function<void()> function) : clock(owner), elapsed(std::move(function)) {
      clock.m_timers.push_back(this);
    }
    ~ManualTimer() override { std::erase(clock.m_timers, this); }

    void start(std::chrono::microseconds delay) override { due = clock.m_now + delay; }
    void stop() override { due.reset(); }
    bool isActive() const override { return due.has_value(); }

    ManualClock& clock;
    std::function<void()> elapsed;
    std::optional<TimePoint> due;
  };

  ManualTimer* nextDueBy(TimePoint end) const {
    ManualTimer* next = nullptr;
    for (ManualTimer* timer : m_timers) {
      if (timer->due && *timer->due <= end && (next == nullptr || *timer->due < *next->due)) next = timer;
    }
    return next;
  }

  TimePoint m_now{std::chrono::hours(1)};
  std::vector<ManualTimer*> m_timers;
};

}  // namespace zolt::test
