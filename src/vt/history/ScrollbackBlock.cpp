#include "vt/history/ScrollbackBlock.h"

#include <algorithm>
#include <utility>

#include "text/TextScan.h"
#include "vt/history/TextUnits.h"

namespace zolt::vt {

std::size_t memoryBytes(const HistoryBlock& block) {
  std::size_t bytes = block.text.capacity() + block.runs.capacity() * sizeof(HistoryRun) +
                      block.packedStyles.capacity() * sizeof(PackedStyle) +
                      block.marks.capacity() * sizeof(HistoryMark);
  for (const std::string& link : block.links) {
    bytes += sizeof link + link.capacity();
  }
  return bytes;
}

ScrollbackBlock::ScrollbackBlock(std::shared_ptr<const HistoryBlock> content, const BlockStart& start)
    : LineBlock({.start = start.position,
                 .firstLine = start.line,
                 .startColumn = start.column,
                 .continuedEndColumn = start.column,
                 .continuesALine = start.continuesALine}),
      m_content(std::move(content)) {
  const std::string_view text = m_content->text;
  m_summary.size = static_cast<std::uint32_t>(text.size());
  m_summary.endsALine = text.empty() ? !start.continuesALine : text.back() == '\n';
  if (plainPrefix(text) != text.size()) {
    m_summary.rule = m_content->clusters ? ColumnRule::Clusters : ColumnRule::Characters;
  }
  bool startsLine = !start.continuesALine;
  for (std::size_t begin = 0; begin < text.size(); startsLine = true) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    if (startsLine) {
      m_lineStarts.push_back(static_cast<std::uint32_t>(begin));
      m_summary.longestLine = std::max<LineColumn>(m_summary.longestLine, end - begin);
    } else {
      m_summary.continuedEndColumn += end - begin;
    }
    begin = end + 1;
  }
  m_lineStarts.shrink_to_fit();
  m_summary.lineStarts = static_cast<std::uint32_t>(m_lineStarts.size());
  if (!m_summary.endsALine) m_nextColumn = columnAfter(fragment(fragmentCount() - 1));
  m_summary.endColumn = static_cast<std::uint32_t>(std::min<LineColumn>(m_nextColumn, UINT32_MAX));
}

BlockStart ScrollbackBlock::startOf(const BlockSummary& summary) {
  return {.position = summary.start,
          .line = summary.firstLine,
          .column = summary.startColumn,
          .continuesALine = summary.continuesALine};
}

BlockStart ScrollbackBlock::following() const {
  const std::uint64_t lines = fragmentCount() - (m_summary.endsALine || fragmentCount() == 0 ? 0 : 1);
  return {
      .position = end(), .line = firstLine() + lines, .column = m_nextColumn, .continuesALine = !m_summary.endsALine};
}

// The column where the next block goes on with the line; 0, to begin anew, if a wide character was among it.
LineColumn ScrollbackBlock::columnAfter(const Fragment& fragment) const {
  if (!isWalked()) return fragment.startColumn + (fragment.contentEnd - fragment.begin);
  LineColumn column = fragment.startColumn;
  for (std::size_t at = fragment.begin; at < fragment.contentEnd;) {
    const TextUnit unit = unitAt(text(), at, m_content->clusters);
    if (unit.width == 2) return 0;
    ++column;
    at += unit.size;
  }
  return column;
}

LineBlock::Fragment ScrollbackBlock::fragment(std::size_t index) const {
  const bool continued = continuesALine();
  const auto startOfFragment = [&](std::size_t i) -> std::size_t {
    if (continued) return i == 0 ? 0 : m_lineStarts[i - 1];
    return m_lineStarts[i];
  };
  const bool last = index + 1 == fragmentCount();
  Fragment fragment{.begin = startOfFragment(index), .end = last ? size() : startOfFragment(index + 1)};
  fragment.contentEnd = fragment.end;
  if (fragment.end > fragment.begin && text()[fragment.end - 1] == '\n') --fragment.contentEnd;
  fragment.startsLine = !continued || index != 0;
  fragment.startColumn = fragment.startsLine ? 0 : m_summary.startColumn;
  return fragment;
}

std::size_t ScrollbackBlock::fragmentAt(std::size_t offset) const {
  const auto after = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
  const auto startsUpTo = static_cast<std::size_t>(after - m_lineStarts.begin());
  return continuesALine() ? startsUpTo : startsUpTo - 1;
}

// Calls `onRow` with the offset where each row begins, until it returns false.
template <class OnRow>
void ScrollbackBlock::walkRows(const Fragment& fragment, LineColumn columns, OnRow onRow) const {
  const std::string_view content = text().substr(0, fragment.contentEnd);
  LineColumn used = fragment.startColumn % columns;
  if (used == 0) used = columns;
  for (std::size_t at = fragment.begin; at < content.size();) {
    // Each character of a run of ASCII is a unit, but the last may go on.
    const std::size_t ascii = printablePrefix(content.substr(at));
    const std::size_t narrow = at + ascii == content.size() || ascii == 0 ? ascii : ascii - 1;
    for (const std::size_t end = at + narrow; at < end;) {
      if (used == columns) {
        if (!onRow(at)) return;
        used = 0;
      }
      const auto taken = std::min<LineColumn>(end - at, columns - used);
      used += taken;
      at += taken;
    }
    if (at == content.size()) return;
    const TextUnit unit = unitAt(content, at, m_content->clusters);
    const auto width = std::min<LineColumn>(static_cast<LineColumn>(unit.width), columns);
    if (used + width > columns) {
      if (!onRow(at)) return;
      used = 0;
    }
    used += width;
    at += unit.size;
  }
}

RowNumber ScrollbackBlock::rows(const Fragment& fragment, LineColumn columns) const {
  RowNumber rows = 0;
  if (isWalked()) {
    walkRows(fragment, columns, [&](std::size_t) { return ++rows > 0; });
  } else {
    rows = rowsUpTo(fragment.startColumn + (fragment.contentEnd - fragment.begin), columns) -
           rowsUpTo(fragment.startColumn, columns);
  }
  return fragment.startsLine ? std::max<RowNumber>(rows, 1) : rows;
}

LineBlock::Place ScrollbackBlock::rowBegin(const Fragment& fragment, LineColumn columns, RowNumber row) const {
  Place place{.offset = fragment.contentEnd,
              .column = static_cast<LineColumn>(rowsUpTo(fragment.startColumn, columns) + row) * columns};
  if (isWalked()) {
    walkRows(fragment, columns, [&](std::size_t offset) {
      if (row-- > 0) return true;
      place.offset = offset;
      return false;
    });
  } else {
    place.offset = static_cast<std::size_t>(
        std::min<LineColumn>(fragment.contentEnd, fragment.begin + (place.column - fragment.startColumn)));
  }
  return place;
}

RowNumber ScrollbackBlock::rowAt(const Fragment& fragment, LineColumn columns, std::size_t offset) const {
  RowNumber row = -1;
  if (isWalked()) {
    walkRows(fragment, columns, [&](std::size_t begin) {
      if (begin > offset) return false;
      ++row;
      return true;
    });
  } else {
    const LineColumn column = fragment.startColumn + (std::min(offset, fragment.contentEnd) - fragment.begin);
    const RowNumber started = rowsUpTo(column + 1, columns) - rowsUpTo(fragment.startColumn, columns);
    row = std::min(started, rows(fragment, columns)) - 1;
  }
  return fragment.startsLine ? std::max<RowNumber>(row, 0) : row;
}

Style ScrollbackBlock::styleOfRun(std::size_t run) const {
  const std::size_t style = m_content->runs[run].style;
  return style < m_content->packedStyles.size() ? unpackedStyle(m_content->packedStyles[style]) : Style();
}

std::size_t ScrollbackBlock::memoryBytes() const {
  return sizeof(ScrollbackBlock) + vt::memoryBytes(*m_content) + m_lineStarts.capacity() * sizeof(std::uint32_t);
}

std::shared_ptr<const LineBlock> ScrollbackBlock::decoded(const BlockSummary& summary, std::string_view bytes) {
  std::optional<HistoryBlock> content = decodeHistoryBlock(bytes);
  if (!content) return nullptr;
  auto block = std::make_shared<const ScrollbackBlock>(std::make_shared<const HistoryBlock>(std::move(*content)),
                                                       startOf(summary));
  return block->summary() == summary ? block : nullptr;
}

std::shared_ptr<const LineBlock> ScrollbackBlock::lost(const BlockSummary& summary) {
  auto content = std::make_shared<HistoryBlock>();
  content->text = lostText(summary);
  content->packedStyles.emplace_back();
  if (!content->text.empty()) content->runs.emplace_back();
  return std::make_shared<const ScrollbackBlock>(std::move(content), startOf(summary));
}

}  // namespace zolt::vt
