#pragma once

#include <QSocketNotifier>
#include <functional>
#include <memory>

namespace zolt {

/// Turns requests to end (SIGTERM, SIGINT, SIGHUP) into a call on the main thread, so that the program can end in
/// order.
///
/// One per process, for as long as it lives; then the signals do what they did before, if not ignored. A second request
/// while the first is being followed ends the process at once.
class TerminationSignals {
 public:
  explicit TerminationSignals(std::function<void()> end);
  ~TerminationSignals();
  /// From now on these signals do nothing: what is left of the end takes a bounded time and is not to be torn.
  static void ignoreFromNow();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

 private:
  std::unique_ptr<QSocketNotifier> m_notifier;
};

}  // namespace zolt
