#pragma once

#include <functional>

#include "platform/MainQueue.h"
#include "session/PTYSession.h"

namespace zolt {

/// Calls `then` on the main thread once all that a program that has ended left in its terminal has been read, or five
/// seconds later if a process that it left behind goes on printing. `session` must live as long as `owner`.
void whenDrained(const MainQueue::Owner& owner, const PTYSession& session, std::function<void()> then);

}  // namespace zolt
