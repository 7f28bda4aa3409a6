#include "platform/Clock.h"

#include <QTimer>
#include <utility>

namespace zolt {

namespace {

class QtTimer : public Timer {
 public:
  explicit QtTimer(std::function<void()> elapsed) {
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    m_timer.callOnTimeout([elapsed = std::move(elapsed)] { elapsed(); });
  }

  void start(std::chrono::microseconds delay) override {
    m_timer.start(std::chrono::ceil<std::chrono::milliseconds>(delay));
  }
  void stop() override { m_timer.stop(); }
  bool isActive() const override { return m_timer.isActive(); }

 private:
  QTimer m_timer;
};

class SteadyClock : public Clock {
 public:
  TimePoint now() const override { return std::chrono::steady_clock::now(); }
  std::unique_ptr<Timer> makeTimer(std::function<void()> elapsed) override {
    return std::make_unique<QtTimer>(std::move(elapsed));
  }
};

}  // namespace

Clock& Clock::steady() {
  static SteadyClock clock;
  return clock;
}

}  // namespace zolt
