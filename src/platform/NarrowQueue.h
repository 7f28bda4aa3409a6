#pragma once

#include <functional>
#include <memory>

#include "platform/WorkerQueue.h"

namespace zolt {

/// A share of a worker queue: at most `width` of the tasks submitted here run at once, in the order in which they were
/// submitted. Tasks submitted to the worker queue itself do not wait behind them. Any thread may submit; waiting tasks
/// outlive this object.
class NarrowQueue {
 public:
  /// `queue` must outlive the tasks.
  NarrowQueue(WorkerQueue& queue, int width);

  void async(WorkerQueue::Task task);

 private:
  struct State;
  WorkerQueue& m_queue;
  std::shared_ptr<State> m_state;
};

}  // namespace zolt
