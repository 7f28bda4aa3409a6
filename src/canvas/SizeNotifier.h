#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>

#include "base/TerminalSize.h"
#include "platform/Clock.h"

namespace zolt {

/// Passes on a terminal's size once it has come to rest.
///
/// A shell redraws its prompt on every SIGWINCH, and in a log every one of those prompts stays. So a drag of the
/// window's edge, or a sidebar sliding in, is one change, however many steps it takes; and none if it ends at the size
/// at which it began. The first size is passed on in the next turn of the event loop, without waiting. Main thread.
class SizeNotifier {
 public:
  /// How long a size must hold to be at rest. The steps of a drag are a frame or two apart; this also bridges slow
  /// frames and a hesitating hand. The text itself is rewrapped at once, so only the program waits.
  static constexpr std::chrono::milliseconds restInterval{250};

  SizeNotifier(std::function<void(const TerminalSize&)> notify, Clock& clock = Clock::steady());

  /// Sets the terminal's current size.
  void update(const TerminalSize& size);
  /// How long a size must hold from now on.
  void setRest(std::chrono::milliseconds rest) { m_rest = rest; }
  /// While held, nothing is passed on, because more changes are known to follow. On release the rest interval begins.
  void hold(bool held);

 private:
  void startTimer();

  std::function<void(const TerminalSize&)> m_notify;
  std::optional<TerminalSize> m_size;
  std::optional<TerminalSize> m_told;
  bool m_held = false;
  std::chrono::milliseconds m_rest = restInterval;
  std::unique_ptr<Timer> m_timer;
};

}  // namespace zolt
