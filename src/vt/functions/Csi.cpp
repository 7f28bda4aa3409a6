#include "vt/functions/Csi.h"

#include <algorithm>
#include <vector>

namespace zolt::vt {

namespace {

constexpr char kFirstFinal = 0x40;
constexpr std::size_t kFinals = 0x7F - kFirstFinal;

// Most sequences have no intermediates: those are found by prefix and final, the others by a search.
struct Index {
  using ByFinal = std::array<const CsiFunction*, kFinals>;

  Index() {
    for (const auto& table : csiTables()) {
      for (const CsiFunction& function : table) {
        if (function.intermediates.empty()) {
          direct[prefixIndex(function.prefix)][finalIndex(function.final)] = &function;
        } else {
          others.push_back(&function);
        }
      }
    }
  }

  // The four prefixes, '<' to '?', are adjacent in ASCII.
  static std::size_t prefixIndex(char prefix) { return prefix == 0 ? 0 : static_cast<std::size_t>(prefix - '<') + 1; }
  static std::size_t finalIndex(char final) { return static_cast<std::size_t>(final - kFirstFinal); }

  std::array<ByFinal, 5> direct{};
  std::vector<const CsiFunction*> others;
};

}  // namespace

std::array<std::span<const CsiFunction>, 5> csiTables() {
  return {csiCursor(), csiEditing(), csiRectangles(), csiReports(), csiSettings()};
}

const CsiFunction* findCsi(const ControlSequence& sequence) {
  static const Index index;
  if (sequence.intermediateCount == 0) {
    return index.direct[Index::prefixIndex(sequence.prefix)][Index::finalIndex(sequence.final)];
  }
  const auto found = std::ranges::find_if(index.others, [&](const CsiFunction* function) {
    return function->final == sequence.final && function->prefix == sequence.prefix &&
           function->intermediates == sequence.intermediateText();
  });
  return found == index.others.end() ? nullptr : *found;
}

Rectangle rectangleOf(const TerminalState& state, const ControlSequence& sequence, std::size_t first) {
  const Screen& screen = state.screen;
  const Rectangle within = screen.modes.origin ? screen.margins() : screen.area();
  // 0 or omitted means the edge; anything past the edge is clipped to it.
  const auto edge = [&](std::size_t index, int begin, int end, int fallback) {
    const int given = sequence.parameter(first + index, 0);
    return given == 0 ? fallback : begin + std::min(given, end - begin);
  };
  const auto [rows, columns] = within;
  const Rectangle area = {.rows = {.begin = edge(0, rows.begin, rows.end, rows.begin + 1) - 1,
                                   .end = edge(2, rows.begin, rows.end, rows.end)},
                          .columns = {.begin = edge(1, columns.begin, columns.end, columns.begin + 1) - 1,
                                      .end = edge(3, columns.begin, columns.end, columns.end)}};
  return area.isEmpty() ? Rectangle() : area;
}

}  // namespace zolt::vt
