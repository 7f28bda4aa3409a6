#include "app/WhenDrained.h"

#include <chrono>
#include <utility>

namespace zolt {

namespace {

constexpr std::chrono::milliseconds kPoll{1};
// Reading what the program left in the terminal takes no time.
constexpr std::chrono::seconds kLimit{5};

using TimePoint = std::chrono::steady_clock::time_point;

void poll(const MainQueue::Owner& owner, const PTYSession& session, TimePoint deadline, std::function<void()> then) {
  if (session.isDrained() || std::chrono::steady_clock::now() >= deadline) {
    then();
    return;
  }
  MainQueue::after(owner, kPoll,
                   [owner, &session, deadline, then = std::move(then)] { poll(owner, session, deadline, then); });
}

}  // namespace

void whenDrained(const MainQueue::Owner& owner, const PTYSession& session, std::function<void()> then) {
  poll(owner, session, std::chrono::steady_clock::now() + kLimit, std::move(then));
}

}  // namespace zolt
