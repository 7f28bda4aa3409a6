#include "platform/NarrowQueue.h"

#include <deque>
#include <mutex>
#include <utility>

namespace zolt {

struct NarrowQueue::State {
  std::mutex mutex;  // guards everything below
  std::deque<WorkerQueue::Task> waiting;
  int freeWorkers;

  explicit State(int width) : freeWorkers(width) {}

  // False if the maximum number of workers is busy; one of them will run the task.
  bool addAndTakeWorker(WorkerQueue::Task task) {
    const std::lock_guard lock(mutex);
    waiting.push_back(std::move(task));
    if (freeWorkers == 0) return false;
    --freeWorkers;
    return true;
  }

  // Empty if nothing is waiting; the worker then exits.
  WorkerQueue::Task next() {
    const std::lock_guard lock(mutex);
    if (waiting.empty()) {
      ++freeWorkers;
      return {};
    }
    WorkerQueue::Task task = std::move(waiting.front());
    waiting.pop_front();
    return task;
  }
};

NarrowQueue::NarrowQueue(WorkerQueue& queue, int width) : m_queue(queue), m_state(std::make_shared<State>(width)) {}

void NarrowQueue::async(WorkerQueue::Task task) {
  if (!m_state->addAndTakeWorker(std::move(task))) return;
  m_queue.async([state = m_state] {
    while (const WorkerQueue::Task next = state->next()) {
      next();
    }
  });
}

}  // namespace zolt
