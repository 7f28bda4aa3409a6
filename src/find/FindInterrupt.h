#pragma once

#include <chrono>
#include <functional>
#include <utility>

namespace zolt {

/// Lets a search be given up in the middle of a text. One thread at a time.
class FindInterrupt {
 public:
  /// Never given up.
  FindInterrupt() = default;
  /// Given up as soon as `wanted`, which is asked now and then, says so.
  explicit FindInterrupt(std::function<bool()> wanted) : m_wanted(std::move(wanted)) {}

  /// Steps of a search are the places where an expression is looked at; it is asked once in so long.
  static constexpr std::chrono::milliseconds interval{5};

  /// Counts a step. True when the search is to be given up, and from then on.
  bool stepAndAsk() {
    if (!m_wanted || m_given) return m_given;
    const auto now = std::chrono::steady_clock::now();
    if (now - m_asked < interval) return false;
    m_asked = now;
    return ask();
  }
  /// Asks at once.
  bool ask() {
    if (m_wanted && !m_given) m_given = m_wanted();
    return m_given;
  }
  bool isGiven() const { return m_given; }

 private:
  std::function<bool()> m_wanted;
  std::chrono::steady_clock::time_point m_asked;
  bool m_given = false;
};

}  // namespace zolt
