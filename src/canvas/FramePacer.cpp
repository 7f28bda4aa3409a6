#include "canvas/FramePacer.h"

#include <algorithm>
#include <utility>

namespace zolt {

FramePacer::FramePacer(std::function<void()> makeFrame, Clock& clock)
    : m_makeFrame(std::move(makeFrame)), m_clock(clock), m_timer(clock.makeTimer([this] { run(); })) {}

void FramePacer::request() {
  if (!m_timer->isActive()) m_timer->start(timeToWait());
}

void FramePacer::requestAtOnce() {
  if (m_timer->isActive()) return;
  if (const auto wait = timeToWait(); wait.count() > 0) {
    m_timer->start(wait);
  } else {
    run();
  }
}

// Until the next frame, which counts as one of a flood if there is no pause before it.
std::chrono::microseconds FramePacer::timeToWait() {
  const auto interval = m_framesWithoutPause < floodFrames ? m_interval : 2 * m_interval;
  const auto elapsed = std::chrono::duration_cast<std::chrono::microseconds>(m_clock.now() - m_last);
  const auto wait = std::max(interval - elapsed, std::chrono::microseconds(0));
  m_framesWithoutPause = wait.count() == 0 ? 0 : m_framesWithoutPause + 1;
  return wait;
}

void FramePacer::run() {
  m_last = m_clock.now();
  m_makeFrame();
}

}  // namespace zolt
