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

  // False where as many workers as allowed are busy: one of them will come to it.
  bool addAndTakeWorker(WorkerQueue::Task task) {
    const std::lock_guard lock(mutex);
    waiting.push_back(std::move(task));
    if (freeWorkers == 0) return false;
    --freeWorkers;
    return true;
  }

  // Empty where nothing waits; the worker is free then.
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
