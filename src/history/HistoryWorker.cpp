#include "history/HistoryWorker.h"

#ifdef __GLIBC__
#include <malloc.h>
#endif

#include <chrono>
#include <csignal>
#include <utility>

namespace zolt {

namespace {

constexpr std::chrono::milliseconds kRest{200};
constexpr int kStepsBeforeRest = 64;  // some MiB

void giveFreeMemoryBack() {
#ifdef __GLIBC__
  malloc_trim(0);
#endif
}

}  // namespace

HistoryWorker& HistoryWorker::shared() {
  static HistoryWorker worker;
  return worker;
}

HistoryWorker::HistoryWorker() {
  // The thread blocks all signals: the main thread handles them.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  m_thread = std::thread([this] { run(); });
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

HistoryWorker::~HistoryWorker() {
  {
    const std::lock_guard lock(m_mutex);
    m_stopping = true;
  }
  m_wake.notify_one();
  m_thread.join();
}

void HistoryWorker::submit(std::shared_ptr<SteppedWork> work) {
  {
    const std::lock_guard lock(m_mutex);
    m_queue.push_back(std::move(work));
  }
  m_wake.notify_one();
}

// Blocks as they were are freed between those that stay: what the allocator keeps of them is given back to the system
// once nothing has come for a while.
void HistoryWorker::waitForWork(std::unique_lock<std::mutex>& lock) {
  const auto hasWork = [this] { return m_stopping || !m_queue.empty(); };
  if (m_steps >= kStepsBeforeRest && !m_wake.wait_for(lock, kRest, hasWork)) {
    lock.unlock();
    giveFreeMemoryBack();
    m_steps = 0;
    lock.lock();
  }
  m_wake.wait(lock, hasWork);
}

void HistoryWorker::run() {
  std::unique_lock lock(m_mutex);
  while (true) {
    waitForWork(lock);
    if (m_stopping) return;
    ++m_steps;
    std::shared_ptr<SteppedWork> work = std::move(m_queue.front());
    m_queue.pop_front();
    lock.unlock();
    const bool more = work->step();
    lock.lock();
    if (more) m_queue.push_back(std::move(work));
    // If this was the last reference, the destructor runs here, without the lock.
    lock.unlock();
    work.reset();
    lock.lock();
  }
}

}  // namespace zolt
