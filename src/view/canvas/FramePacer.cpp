#include "view/canvas/FramePacer.h"

#include <utility>

namespace zolt {

std::chrono::microseconds untilNextFrame(FramePacer::Clock::time_point now, FramePacer::Clock::time_point last,
                                         std::chrono::microseconds interval) {
  const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(now - last);
  return elapsed >= interval ? std::chrono::microseconds(0) : interval - elapsed;
}

FramePacer::FramePacer(std::function<void()> makeFrame, QObject* parent)
    : QObject(parent), m_makeFrame(std::move(makeFrame)) {
  m_timer.setSingleShot(true);
  m_timer.setTimerType(Qt::PreciseTimer);
  connect(&m_timer, &QTimer::timeout, this, &FramePacer::run);
}

void FramePacer::request() {
  if (m_timer.isActive()) return;
  const auto interval = m_framesWithoutPause < rushFrames ? m_interval : 2 * m_interval;
  const auto wait = untilNextFrame(Clock::now(), m_last, interval);
  m_framesWithoutPause = wait.count() == 0 ? 0 : m_framesWithoutPause + 1;
  m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(wait));
}

void FramePacer::run() {
  m_last = Clock::now();
  m_makeFrame();
}

}  // namespace zolt
