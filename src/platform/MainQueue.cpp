#include "platform/MainQueue.h"

#include <QBasicTimer>
#include <QCoreApplication>
#include <QEvent>
#include <QTimer>
#include <QTimerEvent>
#include <deque>
#include <mutex>
#include <utility>

namespace zolt {

namespace {

struct Entry {
  bool owned = false;
  MainQueue::Owner owner;
  MainQueue::Task task;
};

// How long tasks may run before the event loop gets its turn: well under a frame.
constexpr std::chrono::milliseconds kTurn{4};

class Dispatcher : public QObject {
 public:
  // Never destroyed: tasks may be submitted while everything else is being destroyed, and are then never run.
  static Dispatcher& shared() {
    static auto* dispatcher = new Dispatcher;
    return *dispatcher;
  }

  void submit(Entry entry) {
    bool wake = false;
    {
      const std::lock_guard lock(m_mutex);
      m_entries.push_back(std::move(entry));
      wake = !std::exchange(m_awake, true);
    }
    if (wake) QCoreApplication::postEvent(this, new QEvent(QEvent::User));
  }

 protected:
  void customEvent(QEvent*) override { run(); }

  void timerEvent(QTimerEvent* event) override {
    if (event->timerId() != m_nextTurn.timerId()) return;
    m_nextTurn.stop();
    run();
  }

 private:
  Dispatcher() {
    if (QCoreApplication* application = QCoreApplication::instance()) moveToThread(application->thread());
  }

  void run() {
    const auto deadline = std::chrono::steady_clock::now() + kTurn;
    // Only the tasks that are queued now: those submitted while they run belong to a later turn.
    std::size_t left = 0;
    {
      const std::lock_guard lock(m_mutex);
      left = m_entries.size();
    }
    while (true) {
      Entry entry;
      {
        const std::lock_guard lock(m_mutex);
        if (m_entries.empty()) {
          m_awake = false;
          return;
        }
        if (left == 0) break;
        entry = std::move(m_entries.front());
        m_entries.pop_front();
      }
      --left;
      if (!entry.owned || entry.owner) entry.task();
      if (std::chrono::steady_clock::now() >= deadline) break;
    }
    // More is waiting: a timer, unlike a posted event, lets window events and paints through first.
    m_nextTurn.start(0, this);
  }

  std::mutex m_mutex;
  std::deque<Entry> m_entries;
  bool m_awake = false;  // an event or a timer is pending
  QBasicTimer m_nextTurn;
};

// Created with the application, on its thread, not by whichever background thread submits first.
void makeDispatcher() {
  Dispatcher::shared();
}
Q_COREAPP_STARTUP_FUNCTION(makeDispatcher)

}  // namespace

void MainQueue::async(Task task) {
  Dispatcher::shared().submit({.owned = false, .owner = {}, .task = std::move(task)});
}

void MainQueue::async(const Owner& owner, Task task) {
  Dispatcher::shared().submit({.owned = true, .owner = owner, .task = std::move(task)});
}

void MainQueue::after(std::chrono::milliseconds delay, Task task) {
  QTimer::singleShot(delay, Qt::PreciseTimer, &Dispatcher::shared(), std::move(task));
}

void MainQueue::after(const Owner& owner, std::chrono::milliseconds delay, Task task) {
  QTimer::singleShot(delay, Qt::PreciseTimer, &Dispatcher::shared(), [owner, task = std::move(task)] {
    if (owner) task();
  });
}

}  // namespace zolt
