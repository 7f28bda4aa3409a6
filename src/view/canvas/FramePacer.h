#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>

namespace zolt {

/// Decides when the next frame is made: at once after a pause, else once per refresh of the screen, however often it is
/// asked.
class FramePacer : public QObject {
 public:
  using Clock = std::chrono::steady_clock;

  /// Calls `makeFrame` from the event loop.
  FramePacer(std::function<void()> makeFrame, QObject* parent);

  void setInterval(std::chrono::microseconds interval) { m_interval = interval; }
  /// Wants a frame; wishes until it is made count as one.
  void request();
  bool isPending() const { return m_timer.isActive(); }

 private:
  void run();

  std::function<void()> m_makeFrame;
  std::chrono::microseconds m_interval{16667};
  Clock::time_point m_last;
  QTimer m_timer;
};

/// How long from `now` until a frame may be made when the last one was made at `last`; 0 for at once. Pure.
std::chrono::microseconds untilNextFrame(FramePacer::Clock::time_point now, FramePacer::Clock::time_point last,
                                         std::chrono::microseconds interval);

}  // namespace zolt
