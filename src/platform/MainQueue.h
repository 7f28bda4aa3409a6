#pragma once

#include <QObject>
#include <QPointer>
#include <chrono>
#include <functional>

namespace zolt {

/// The main dispatch queue: tasks that run later on the main thread, in the order in which they were submitted.
///
/// Any thread may submit; the tasks run in the event loop of the thread of the QCoreApplication. A long series of tasks
/// yields to input and painting after a few milliseconds and continues in the next turn of the loop. A task that has an
/// owner holds it weakly and is dropped if the owner is gone by then. A task must not run a nested event loop: the rest
/// of the queue would wait for it.
class MainQueue {
 public:
  using Task = std::function<void()>;
  /// Create it on the main thread, where the owner lives; any thread may copy it.
  using Owner = QPointer<const QObject>;

  /// Runs `task` in a later turn of the main loop.
  static void async(Task task);
  static void async(const Owner& owner, Task task);

  /// Runs `task` no earlier than `delay` from now. Main thread only.
  static void after(std::chrono::milliseconds delay, Task task);
  static void after(const Owner& owner, std::chrono::milliseconds delay, Task task);
};

}  // namespace zolt
