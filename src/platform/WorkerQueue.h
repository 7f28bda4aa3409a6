#pragma once

#include <QThreadPool>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace zolt {

/// A concurrent queue for low-priority background work; child processes started by its tasks inherit the priority. Any
/// thread may submit.
///
/// Tasks start in the order in which they were submitted and run concurrently, at most `threads` at once. The
/// destructor waits for running tasks and drops those that have not started.
class WorkerQueue {
 public:
  using Task = std::function<void()>;

  explicit WorkerQueue(int threads);
  ~WorkerQueue();
  WorkerQueue(const WorkerQueue&) = delete;
  WorkerQueue& operator=(const WorkerQueue&) = delete;

  /// Enough for tasks that spend most of their time waiting for child processes.
  static constexpr int utilityThreads = 128;
  /// The process-wide queue, with `utilityThreads` threads.
  static WorkerQueue& utility();

  void async(Task task);

 private:
  void runNext();

  std::mutex m_mutex;
  std::deque<Task> m_tasks;
  QThreadPool m_pool;
};

/// Counts pieces of work in progress, so that something can happen when the last of them is done.
///
/// Any thread may enter, leave and wait. `notify` runs its task once, on the main queue, when the count next reaches 0.
class TaskGroup {
 public:
  void enter();
  void leave();
  /// Blocks until the count is 0.
  void wait();
  /// Submits `task` to the main queue as soon as the count is 0, at once if it already is.
  void notify(std::function<void()> task);

 private:
  std::mutex m_mutex;
  std::condition_variable m_idle;
  int m_count = 0;
  std::deque<std::function<void()>> m_waiting;
};

}  // namespace zolt
