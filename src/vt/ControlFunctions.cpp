#include "vt/ControlFunctions.h"

#include <algorithm>
#include <vector>

namespace zolt::vt {

namespace {

constexpr std::size_t kFinals = 0x7F - 0x40;

// Sequences with no intermediates are most: found by prefix and final, the others by looking.
struct Index {
  using ByFinal = std::array<const ControlFunction*, kFinals>;

  Index() {
    for (const auto& table : controlFunctions()) {
      for (const ControlFunction& function : table) {
        if (function.intermediates.empty()) {
          direct[place(function.prefix)][static_cast<std::size_t>(function.final - 0x40)] = &function;
        } else {
          others.push_back(&function);
        }
      }
    }
  }

  // The prefixes are four neighbours.
  static std::size_t place(char prefix) { return prefix == 0 ? 0 : static_cast<std::size_t>(prefix - '<') + 1; }

  std::array<ByFinal, 5> direct{};
  std::vector<const ControlFunction*> others;
};

}  // namespace

std::array<std::span<const ControlFunction>, 5> controlFunctions() {
  return {cursorFunctions(), editingFunctions(), rectangleFunctions(), reportFunctions(), settingFunctions()};
}

const ControlFunction* findControlFunction(const ControlSequence& sequence) {
  static const Index index;
  if (sequence.intermediateCount == 0) {
    return index.direct[Index::place(sequence.prefix)][static_cast<std::size_t>(sequence.final - 0x40)];
  }
  const auto found = std::ranges::find_if(index.others, [&](const ControlFunction* function) {
    return function->final == sequence.final && function->prefix == sequence.prefix &&
           function->intermediates == sequence.intermediateText();
  });
  return found == index.others.end() ? nullptr : *found;
}

Rectangle rectangleOf(const TerminalState& state, const ControlSequence& sequence, std::size_t first) {
  const Screen& screen = state.screen;
  const bool origin = screen.modes.origin;
  const Rectangle margins = screen.margins();
  const Rectangle within = origin ? margins : Rectangle{0, 0, screen.rows(), screen.columns()};
  // A number that is 0 or not given is the edge; one behind the edge is the last before it.
  const auto edge = [&](std::size_t index, int begin, int end, int fallback) {
    const int given = sequence.parameter(first + index, 0);
    return given == 0 ? fallback : begin + std::min(given, end - begin);
  };
  const int top = edge(0, within.top, within.bottom, within.top + 1) - 1;
  const int left = edge(1, within.left, within.right, within.left + 1) - 1;
  const int bottom = edge(2, within.top, within.bottom, within.bottom);
  const int right = edge(3, within.left, within.right, within.right);
  if (top >= bottom || left >= right) return {};
  return {top, left, bottom, right};
}

}  // namespace zolt::vt
