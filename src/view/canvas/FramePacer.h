#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>

namespace zolt {

/// Decides when the next frame is made: at once after a pause, else once per refresh of the screen, however often it is
/// asked; once per two refreshes when it has been asked without a pause for a while. What rushes by that fast nobody
/// reads, and the time is better spent on letting it through.
class FramePacer : public QObject {
 public:
  using Clock = std::chrono::steady_clock;

  /// Calls `makeFrame` from the event loop.
  FramePacer(std::function<void()> makeFrame, QObject* parent);

  /// So many frames in a row without a pause count as a rush.
  static constexpr int rushFrames = 30;

  void setInterval(std::chrono::microseconds interval) { m_interval = interval; }
  /// Wants a frame; wishes until it is made count as one.
  void request();
  bool isPending() const { return m_timer.isActive(); }

 private:
  void run();

  std::function<void()> m_makeFrame;
  std::chrono::microseconds m_interval{16667};
  Clock::time_point m_last;
  int m_framesWithoutPause = 0;
  QTimer m_timer;
};

/// How long from `now` until a frame may be made when the last one was made at `last`; 0 for at once. Pure.
std::chrono::microseconds untilNextFrame(FramePacer::Clock::time_point now, FramePacer::Clock::time_point last,
                                         std::chrono::microseconds interval);

}  // namespace zolt
