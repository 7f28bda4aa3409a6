#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace zolt {

/// Work done in steps of a few milliseconds at most, on the worker's thread.
class SteppedWork {
 public:
  virtual ~SteppedWork() = default;
  /// Performs the next step; false when nothing is left for now.
  virtual bool step() = 0;
};

/// The thread that serves all histories of the process, one step each in turn. After a rest it gives memory that is
/// free back to the system.
class HistoryWorker {
 public:
  /// Started on first use, stopped when the process ends.
  static HistoryWorker& shared();

  HistoryWorker();
  ~HistoryWorker();

  /// Schedules `work` until a step returns false. Any thread.
  void submit(std::shared_ptr<SteppedWork> work);

 private:
  void run();
  void waitForWork(std::unique_lock<std::mutex>& lock);

  std::mutex m_mutex;
  std::condition_variable m_wake;
  std::deque<std::shared_ptr<SteppedWork>> m_queue;
  bool m_stopping = false;
  int m_steps = 0;  // since the last rest; the thread's own
  std::thread m_thread;
};

}  // namespace zolt
