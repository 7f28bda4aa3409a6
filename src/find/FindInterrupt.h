#pragma once

#include <chrono>
#include <functional>
#include <utility>

namespace zolt {

/// Stops a search in the middle of a text. One thread at a time.
class FindInterrupt {
 public:
  /// Never stops the search.
  FindInterrupt() = default;
  /// Stops the search once `shouldStop`, which is called every now and then, returns true.
  explicit FindInterrupt(std::function<bool()> shouldStop) : m_shouldStop(std::move(shouldStop)) {}

  /// The shortest time between two calls of `shouldStop` from `checkSometimes`.
  static constexpr std::chrono::milliseconds interval{5};

  /// Whether the search must stop. Cheap enough to be called for each match.
  bool checkSometimes() {
    if (!m_shouldStop || m_hasStopped) return m_hasStopped;
    const auto now = std::chrono::steady_clock::now();
    if (now - m_lastCheck < interval) return false;
    m_lastCheck = now;
    return check();
  }
  /// The same, always with a call of `shouldStop`.
  bool check() {
    if (m_shouldStop && !m_hasStopped) m_hasStopped = m_shouldStop();
    return m_hasStopped;
  }
  /// The outcome of the last check.
  bool hasStopped() const { return m_hasStopped; }

 private:
  std::function<bool()> m_shouldStop;
  std::chrono::steady_clock::time_point m_lastCheck;
  bool m_hasStopped = false;
};

}  // namespace zolt
