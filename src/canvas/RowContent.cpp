#include "canvas/RowContent.h"

#include <algorithm>

#include "canvas/Syllables.h"

namespace zolt {

namespace {

// By its first byte: not ASCII, Latin, Greek, Cyrillic, Hebrew, Arabic or Chinese.
constexpr bool mayContinueSyllable(std::string_view utf8) {
  const auto byte = static_cast<unsigned char>(utf8.front());
  return byte == 0xE0 || byte == 0xE1 || byte == 0xEA;
}

}  // namespace

void RowContent::addText(CanvasColumn column, std::string_view ascii, const CellLook& look) {
  const auto begin = static_cast<std::uint32_t>(text.size());
  text += ascii;
  const auto size = static_cast<std::uint32_t>(ascii.size());
  pieces.push_back(
      {.column = column, .columns = static_cast<int>(size), .begin = begin, .end = begin + size, .look = look});
  blinks = blinks || look.blinks;
}

void RowContent::addBlank(ColumnRange columns, const CellLook& look) {
  const auto begin = static_cast<std::uint32_t>(text.size());
  const int count = columns.end - columns.begin;
  text.append(static_cast<std::size_t>(count), ' ');
  pieces.push_back({.column = columns.begin,
                    .columns = count,
                    .begin = begin,
                    .end = begin + static_cast<std::uint32_t>(count),
                    .look = look});
}

void RowContent::addCluster(ColumnRange columns, std::string_view utf8, const CellLook& look) {
  const auto begin = static_cast<std::uint32_t>(text.size());
  const TextPiece piece{.column = columns.begin,
                        .columns = columns.end - columns.begin,
                        .begin = begin,
                        .end = begin + static_cast<std::uint32_t>(utf8.size()),
                        .isCluster = true,
                        .look = look};
  const TextPiece* last = pieces.empty() ? nullptr : &pieces.back();
  const bool joins = last != nullptr && mayContinueSyllable(utf8) && last->isCluster &&
                     last->range().end == piece.column && last->columns + piece.columns <= kSyllableColumns &&
                     last->look == look && continuesSyllable(textOf(*last), utf8);
  text += utf8;
  blinks = blinks || look.blinks;
  if (joins) {
    pieces.back().columns += piece.columns;
    pieces.back().end = piece.end;
  } else {
    pieces.push_back(piece);
  }
}

CanvasColumn RowContent::columnOf(TextPosition position) const {
  if (position < range.begin) return {};
  if (position >= range.end) return end;
  const auto after = std::ranges::upper_bound(steps, position, {}, &ColumnStep::position);
  const ColumnStep step = after == steps.begin() ? ColumnStep{.position = range.begin, .column = {}} : *(after - 1);
  if (step.isUnit) return step.column;
  return std::min(step.column + static_cast<int>(position - step.position), end);
}

ColumnRange RowContent::columnsOf(TextRange part) const {
  part = {.begin = std::max(part.begin, range.begin), .end = std::min(part.end, range.end)};
  if (part.empty()) return {};
  return {.begin = columnOf(part.begin), .end = columnOf(part.end)};
}

TextRange RowContent::characterAt(TextPosition position) const {
  if (position < range.begin || position >= range.end) return {.begin = position, .end = position};
  const auto next = std::ranges::upper_bound(steps, position, {}, &ColumnStep::position);
  if (next == steps.begin() || !(next - 1)->isUnit) return {.begin = position, .end = position + 1};
  return {.begin = (next - 1)->position, .end = next == steps.end() ? range.end : next->position};
}

TextPosition RowContent::positionAt(CanvasColumn column) const {
  column = std::max(column, CanvasColumn());
  // Between two steps is a character that takes several columns: the place is after it.
  const auto next = std::ranges::upper_bound(steps, column, {}, &ColumnStep::column);
  const ColumnStep step = next == steps.begin() ? ColumnStep{.position = range.begin, .column = {}} : *(next - 1);
  const TextPosition limit = next == steps.end() ? range.end : next->position;
  if (step.isUnit) return column == step.column ? step.position : limit;
  return std::min(step.position + static_cast<std::uint64_t>(column - step.column), limit);
}

}  // namespace zolt
