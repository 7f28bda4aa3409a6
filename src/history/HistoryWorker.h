#pragma once

#include <condition_variable>
#include <deque>
#include <memory>
#include <mutex>
#include <thread>

namespace zolt {

/// Work that is done in steps of at most a few milliseconds, on the worker's thread.
class SteppedWork {
 public:
  virtual ~SteppedWork() = default;
  /// Does the next step; false when there is none left for now.
  virtual bool step() = 0;
};

/// The thread that works for all histories of the process, step by step in turn.
class HistoryWorker {
 public:
  /// Started at the first use, stopped with the process.
  static HistoryWorker& shared();

  HistoryWorker();
  ~HistoryWorker();

  /// Has `work` done until a step says that nothing is left. Any thread.
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
