#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/Clock.h"

namespace zolt {

/// Decides when the next frame is made: at once after a pause, otherwise at most once per screen refresh; in a
/// sustained flood every second refresh, because nobody can read text at that speed and the time is better spent on
/// throughput.
class FramePacer {
 public:
  /// Calls `makeFrame` from the event loop.
  explicit FramePacer(std::function<void()> makeFrame, Clock& clock = Clock::steady());

  /// This many frames in a row without a pause count as a flood.
  static constexpr int floodFrames = 30;

  void setInterval(std::chrono::microseconds interval) { m_interval = interval; }
  /// Asks for a frame; requests until it is made count as one.
  void request();
  /// The same, for a caller in the event loop: a frame that need not wait is made within the call.
  void requestAtOnce();
  bool isPending() const { return m_timer->isActive(); }

 private:
  std::chrono::microseconds timeToWait();
  void run();

  std::function<void()> m_makeFrame;
  Clock& m_clock;
  std::chrono::microseconds m_interval{16667};
  Clock::TimePoint m_last;
  int m_framesWithoutPause = 0;
  std::unique_ptr<Timer> m_timer;
};

}  // namespace zolt
