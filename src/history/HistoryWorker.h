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

/// The thread that serves all histories of the process, one step each in turn.
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

  std::mutex m_mutex;
  std::condition_variable m_wake;
  std::deque<std::shared_ptr<SteppedWork>> m_queue;
  bool m_stopping = false;
  std::thread m_thread;
};

}  // namespace zolt
