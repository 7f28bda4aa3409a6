#include "history/HistoryWorker.h"

#include <csignal>
#include <utility>

namespace zolt {

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

void HistoryWorker::run() {
  std::unique_lock lock(m_mutex);
  while (true) {
    m_wake.wait(lock, [this] { return m_stopping || !m_queue.empty(); });
    if (m_stopping) return;
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
