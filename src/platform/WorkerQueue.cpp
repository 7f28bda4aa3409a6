#include "platform/WorkerQueue.h"

#include <sys/resource.h>
#include <unistd.h>

#include <QThread>
#include <utility>

#include "base/Fatal.h"
#include "platform/MainQueue.h"

namespace zolt {

namespace {

// On Linux niceness belongs to a thread and is inherited by its children, so background work yields to the window.
void lowerOwnPriority() {
#ifdef __linux__
  constexpr int kNiceness = 10;
  thread_local const int done = setpriority(PRIO_PROCESS, static_cast<id_t>(gettid()), kNiceness);
  static_cast<void>(done);
#endif
}

}  // namespace

WorkerQueue::WorkerQueue(int threads) {
  m_pool.setMaxThreadCount(threads);
  m_pool.setThreadPriority(QThread::LowPriority);
}

WorkerQueue::~WorkerQueue() {
  {
    const std::lock_guard lock(m_mutex);
    m_tasks.clear();
  }
  m_pool.clear();
  m_pool.waitForDone();
}

WorkerQueue& WorkerQueue::utility() {
  static auto* queue = new WorkerQueue(utilityThreads);  // never destroyed: a task may outlive main()
  return *queue;
}

void WorkerQueue::async(Task task) {
  {
    const std::lock_guard lock(m_mutex);
    m_tasks.push_back(std::move(task));
  }
  m_pool.start([this] { runNext(); });
}

void WorkerQueue::runNext() {
  Task task;
  {
    const std::lock_guard lock(m_mutex);
    if (m_tasks.empty()) return;
    task = std::move(m_tasks.front());
    m_tasks.pop_front();
  }
  lowerOwnPriority();
  task();
}

void TaskGroup::enter() {
  const std::lock_guard lock(m_mutex);
  ++m_count;
}

void TaskGroup::leave() {
  std::deque<std::function<void()>> ready;
  {
    const std::lock_guard lock(m_mutex);
    precondition(m_count > 0, "a task group was left more often than entered");
    if (--m_count > 0) return;
    ready = std::exchange(m_waiting, {});
    m_idle.notify_all();
  }
  for (auto& task : ready) {
    MainQueue::async(std::move(task));
  }
}

void TaskGroup::wait() {
  std::unique_lock lock(m_mutex);
  m_idle.wait(lock, [this] { return m_count == 0; });
}

void TaskGroup::notify(std::function<void()> task) {
  {
    const std::lock_guard lock(m_mutex);
    if (m_count > 0) {
      m_waiting.push_back(std::move(task));
      return;
    }
  }
  MainQueue::async(std::move(task));
}

}  // namespace zolt
