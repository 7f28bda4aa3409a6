#pragma once

#include <QThreadPool>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace zolt {

/// A concurrent queue for background work of low priority, that of the child processes started there included. Any
/// thread may submit.
///
/// Tasks start in the order in which they were submitted and run beside each other, at most `threads` at once. The
/// destructor waits for those that run and drops those that have not started.
class WorkerQueue {
 public:
  using Task = std::function<void()>;

  explicit WorkerQueue(int threads);
  ~WorkerQueue();
  WorkerQueue(const WorkerQueue&) = delete;
  WorkerQueue& operator=(const WorkerQueue&) = delete;

  /// As many as tasks that mostly wait for child processes want.
  static constexpr int utilityThreads = 128;
  /// The process-wide queue, of so many threads.
  static WorkerQueue& utility();

  void async(Task task);

 private:
  void runNext();

  std::mutex m_mutex;
  std::deque<Task> m_tasks;
  QThreadPool m_pool;
};

/// Counts pieces of work under way, so that something can happen when the last of them is done.
///
/// Any thread may enter, leave and wait. `notify` runs its task once, on the main queue, when the count next is 0.
class TaskGroup {
 public:
  void enter();
  void leave();
  /// Blocks until the count is 0.
  void wait();
  /// Submits `task` to the main queue as soon as the count is 0, at once when it already is.
  void notify(std::function<void()> task);

 private:
  std::mutex m_mutex;
  std::condition_variable m_idle;
  int m_count = 0;
  std::deque<std::function<void()>> m_waiting;
};

}  // namespace zolt
