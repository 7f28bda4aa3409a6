#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

#include "platform/Descriptor.h"

namespace zolt {

/// Waits on one background thread for many descriptors to become readable or writable.
///
/// One process-wide instance serves all terminals and child processes. Handlers run on the monitor's thread, one at a
/// time, in the order in which the descriptors were added; they must not block for long.
class DescriptorMonitor {
 public:
  /// What happened to the descriptor: a set of poll(2) flags.
  using Handler = std::function<void(short happened)>;

  /// One descriptor being waited for. The descriptor stays open as long as the monitor may still use it.
  class Watch {
   public:
    Watch(std::shared_ptr<const Descriptor> descriptor, short events, Handler handler);

   private:
    friend class DescriptorMonitor;
    std::shared_ptr<const Descriptor> m_descriptor;
    short m_events;  // guarded by the monitor's mutex, as is m_cancelled
    bool m_cancelled = false;
    std::mutex m_running;  // held while the handler runs
    Handler m_handler;
  };

  DescriptorMonitor();
  /// Handlers are never called again once the destructor has returned.
  ~DescriptorMonitor();
  DescriptorMonitor(const DescriptorMonitor&) = delete;
  DescriptorMonitor& operator=(const DescriptorMonitor&) = delete;

  static DescriptorMonitor& shared();

  /// Calls `handler` whenever one of `events` (POLLIN, POLLOUT; 0 for none at present) occurs. Any thread.
  std::shared_ptr<Watch> add(std::shared_ptr<const Descriptor> descriptor, short events, Handler handler);
  /// Changes the events to wait for. Any thread, the handler included.
  void setEvents(const std::shared_ptr<Watch>& watch, short events);
  /// Removes the watch. Once this returns, the handler is not running and will not be called again (if the handler
  /// itself calls this, it is still running). Any thread.
  void cancel(const std::shared_ptr<Watch>& watch);

 private:
  void run();
  void wake();

  std::mutex m_mutex;
  std::vector<std::shared_ptr<Watch>> m_watches;
  bool m_stopping = false;
  Descriptor m_wakeReader;
  Descriptor m_wakeWriter;
  std::thread m_thread;
};

}  // namespace zolt
