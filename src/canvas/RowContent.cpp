#include "canvas/RowContent.h"

#include <algorithm>

namespace zolt {

CanvasColumn RowContent::columnOf(TextPosition position) const {
  if (position < range.begin) return {};
  if (position >= range.end) return end;
  const auto after = std::ranges::upper_bound(steps, position, {}, &ColumnStep::position);
  const ColumnStep step = after == steps.begin() ? ColumnStep{.position = range.begin, .column = {}} : *(after - 1);
  return std::min(step.column + static_cast<int>(position - step.position), end);
}

ColumnRange RowContent::columnsOf(TextRange text) const {
  const TextRange part{.begin = std::max(text.begin, range.begin), .end = std::min(text.end, range.end)};
  if (part.empty()) return {};
  return {.begin = columnOf(part.begin), .end = columnOf(part.end)};
}

TextPosition RowContent::positionAt(CanvasColumn column) const {
  column = std::max(column, CanvasColumn());
  // Between two steps is a character that takes several columns: the place is after it.
  const auto next = std::ranges::upper_bound(steps, column, {}, &ColumnStep::column);
  const ColumnStep step = next == steps.begin() ? ColumnStep{.position = range.begin, .column = {}} : *(next - 1);
  const TextPosition limit = next == steps.end() ? range.end : next->position;
  return std::min(step.position + static_cast<std::uint64_t>(column - step.column), limit);
}

}  // namespace zolt
