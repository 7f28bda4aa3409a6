#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace zolt {

/// Turns requests to end (SIGTERM, SIGINT, SIGHUP) into a call on the main thread, so that the program can shut down in
/// an orderly way.
///
/// One per process. Its destructor restores the default dispositions; a signal that was ignored stays ignored. A second
/// request during the shutdown ends the process at once.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> end);
  ~TerminationSignals();
  /// From now on these signals are ignored: the rest of the shutdown takes a bounded time and must not be interrupted.
  static void ignoreFromNow();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  std::unique_ptr<QSocketNotifier> m_notifier;
};

}  // namespace zolt
