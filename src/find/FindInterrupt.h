#pragma once

#include <functional>
#include <utility>

namespace zolt {

/// Lets a search be given up in the middle of a text. One thread at a time.
class FindInterrupt {
 public:
  /// Never given up.
  FindInterrupt() = default;
  /// Given up as soon as `wanted`, which is asked every kStepsBetween steps, says so.
  explicit FindInterrupt(std::function<bool()> wanted) : m_wanted(std::move(wanted)) {}

  /// The steps of a search are the places where an expression was looked at: each takes at most as long as passing over
  /// FindScanner::kLongLineBytes once.
  static constexpr int kStepsBetween = 16;

  /// Counts a step. True when the search is to be given up, and from then on.
  bool stepAndAsk() {
    if (m_wanted && !m_given && ++m_steps % kStepsBetween == 0) m_given = m_wanted();
    return m_given;
  }
  /// Asks at once.
  bool ask() {
    if (m_wanted && !m_given) m_given = m_wanted();
    return m_given;
  }
  bool isGiven() const { return m_given; }

 private:
  std::function<bool()> m_wanted;
  unsigned m_steps = 0;
  bool m_given = false;
};

}  // namespace zolt
