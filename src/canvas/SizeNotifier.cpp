#include "canvas/SizeNotifier.h"

#include <utility>

namespace zolt {

SizeNotifier::SizeNotifier(std::function<void(const TerminalSize&)> notify, Clock& clock)
    : m_notify(std::move(notify)), m_timer(clock.makeTimer([this] {
        m_told = m_size;
        m_notify(*m_size);
      })) {}

void SizeNotifier::update(const TerminalSize& size) {
  if (m_size == size) return;
  m_size = size;
  if (!m_held) startTimer();
}

void SizeNotifier::hold(bool held) {
  m_held = held;
  if (held) {
    m_timer->stop();
  } else {
    startTimer();
  }
}

void SizeNotifier::startTimer() {
  if (m_size == m_told) {
    m_timer->stop();
  } else {
    m_timer->start(m_told ? m_rest : std::chrono::milliseconds(0));
  }
}

}  // namespace zolt
