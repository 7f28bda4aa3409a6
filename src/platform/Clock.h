#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace zolt {

/// Calls a function once, a given time after it was started. Main thread.
class Timer {
 public:
  virtual ~Timer() = default;
  /// Starts or restarts the timer.
  virtual void start(std::chrono::microseconds delay) = 0;
  virtual void stop() = 0;
  /// True until it fires or is stopped.
  virtual bool isActive() const = 0;
};

/// The time and its timers, so that a test can drive both by hand.
class Clock {
 public:
  using TimePoint = std::chrono::steady_clock::time_point;

  virtual ~Clock() = default;
  virtual TimePoint now() const = 0;
  /// A timer that calls `elapsed` from the event loop, and no longer once it is destroyed.
  virtual std::unique_ptr<Timer> makeTimer(std::function<void()> elapsed) = 0;

  /// The steady clock, with Qt's timers: a delay is rounded up to milliseconds.
  static Clock& steady();
};

}  // namespace zolt
