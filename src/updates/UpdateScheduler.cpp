#include "updates/UpdateScheduler.h"

#include <algorithm>

namespace zolt {

namespace {

// A timer ignores suspended time and changes of the clock, so the time is checked at least this often.
constexpr std::chrono::milliseconds kLongestWait = std::chrono::hours(1);
constexpr std::chrono::milliseconds kRetry = std::chrono::minutes(1);

std::chrono::milliseconds timeLeft(const UpdateContext& context) {
  return timeUntilCheck(context.environment.now(), context.settings.lastCheckTime(),
                        context.settings.scheduledInterval());
}

}  // namespace

UpdateScheduler::UpdateScheduler(UpdateContext& context, QObject* parent) : QObject(parent), m_context(context) {
  m_timer.setSingleShot(true);
  m_timer.setTimerType(Qt::CoarseTimer);
  connect(&m_timer, &QTimer::timeout, this, &UpdateScheduler::check);
}

void UpdateScheduler::start() {
  m_started = true;
  arm(m_context.environment.firstCheckDelay);
}

void UpdateScheduler::rearm() {
  if (m_started) arm(m_context.environment.firstCheckDelay);
}

void UpdateScheduler::arm(std::chrono::milliseconds delayWhenDue) {
  if (!checksInBackground(m_context.settings.launchFacts())) return m_timer.stop();
  const std::chrono::milliseconds left = timeLeft(m_context);
  m_timer.start(std::min(left.count() == 0 ? delayWhenDue : left, kLongestWait));
}

void UpdateScheduler::check() {
  if (!checksInBackground(m_context.settings.launchFacts())) return;
  if (timeLeft(m_context).count() == 0) Q_EMIT due();
  arm(kRetry);
}

}  // namespace zolt
