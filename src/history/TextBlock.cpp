#include "history/TextBlock.h"

#include <algorithm>
#include <cstring>
#include <utility>

#include "history/HistoryBlock.h"
#include "text/TextScan.h"

namespace zolt {

TextBlock::TextBlock(TextPosition start, std::uint64_t firstLine, LineColumn startColumn)
    : LineBlock({.start = start,
                 .firstLine = firstLine,
                 .startColumn = startColumn,
                 .continuedEndColumn = startColumn,
                 .continuesALine = startColumn != 0}),
      m_bytes(new char[capacity + 1]) {  // one extra: the LF of a CR LF that would be split
  if (startColumn == 0) addLineStart(0);
}

LineBlock::Fragment TextBlock::fragment(std::size_t index) const {
  const bool continued = continuesALine();
  const auto startOf = [&](std::size_t i) -> std::size_t {
    if (continued) return i == 0 ? 0 : m_lineStarts[i - 1];
    return m_lineStarts[i];
  };
  Fragment fragment;
  fragment.begin = startOf(index);
  fragment.startsLine = !continued || index != 0;
  fragment.startColumn = fragment.startsLine ? 0 : m_summary.startColumn;
  const bool last = index + 1 == fragmentCount();
  fragment.end = last ? m_summary.size : startOf(index + 1);
  fragment.contentEnd = fragment.end;
  if (!last) {
    --fragment.contentEnd;
    if (m_bytes[fragment.contentEnd] == '\n' && fragment.contentEnd > fragment.begin &&
        m_bytes[fragment.contentEnd - 1] == '\r') {
      --fragment.contentEnd;
    }
  } else {
    // A line end at the end of the text has no line start after it in a sealed block.
    while (fragment.contentEnd > fragment.begin &&
           (m_bytes[fragment.contentEnd - 1] == '\n' || m_bytes[fragment.contentEnd - 1] == '\r')) {
      --fragment.contentEnd;
    }
  }
  return fragment;
}

std::size_t TextBlock::fragmentAt(std::size_t offset) const {
  const auto after = std::upper_bound(m_lineStarts.begin(), m_lineStarts.end(), offset);
  const auto startsUpTo = static_cast<std::size_t>(after - m_lineStarts.begin());
  return continuesALine() ? startsUpTo : startsUpTo - 1;
}

LineColumn TextBlock::columnAt(const Fragment& fragment, std::size_t offset) const {
  offset = std::min(offset, fragment.contentEnd);
  if (!hasTabs()) return fragment.startColumn + (offset - fragment.begin);
  LineColumn column = fragment.startColumn;
  for (std::size_t i = fragment.begin; i < offset; ++i) {
    column = m_bytes[i] == '\t' ? afterTab(column) : column + 1;
  }
  return column;
}

LineBlock::Place TextBlock::placeAt(const Fragment& fragment, LineColumn column) const {
  Place place{.offset = fragment.begin, .column = fragment.startColumn};
  if (column <= place.column) return place;
  if (!hasTabs()) {
    const auto skipped = std::min<std::uint64_t>(fragment.contentEnd - fragment.begin, column - fragment.startColumn);
    return {.offset = fragment.begin + skipped, .column = fragment.startColumn + skipped};
  }
  while (place.offset < fragment.contentEnd && place.column < column) {
    place.column = m_bytes[place.offset] == '\t' ? afterTab(place.column) : place.column + 1;
    ++place.offset;
  }
  return place;
}

RowNumber TextBlock::rows(const Fragment& fragment, LineColumn columns) const {
  const LineColumn end = fragment.startsLine ? endColumn(fragment) : m_summary.continuedEndColumn;
  const RowNumber rows = rowsUpTo(end, columns) - rowsUpTo(fragment.startColumn, columns);
  return fragment.startsLine ? std::max<RowNumber>(rows, 1) : rows;
}

LineBlock::Place TextBlock::rowBegin(const Fragment& fragment, LineColumn columns, RowNumber row) const {
  return placeAt(fragment, static_cast<LineColumn>(rowsUpTo(fragment.startColumn, columns) + row) * columns);
}

// Rows that start at or before the column of the offset, less one. The end of a line that exactly fills its last row
// starts no further row.
RowNumber TextBlock::rowAt(const Fragment& fragment, LineColumn columns, std::size_t offset) const {
  const RowNumber started = rowsUpTo(columnAt(fragment, offset) + 1, columns) - rowsUpTo(fragment.startColumn, columns);
  return std::min(started, rows(fragment, columns)) - 1;
}

std::size_t TextBlock::styleRunAt(std::size_t offset) const {
  const auto after = std::upper_bound(m_runs.begin(), m_runs.end(), offset,
                                      [](std::size_t wanted, const StyleRun& run) { return wanted < run.begin; });
  return static_cast<std::size_t>(after - m_runs.begin()) - 1;
}

void TextBlock::append(std::string_view piece, TextLayout& layout) {
  layOut(piece, layout);
  std::memcpy(m_bytes.get() + size(), piece.data(), piece.size());
  m_summary.size += static_cast<std::uint32_t>(piece.size());
}

// Records the line ends and tabs of `piece`, which is about to be appended.
void TextBlock::layOut(std::string_view piece, TextLayout& layout) {
  std::size_t position = 0;
  while (position < piece.size()) {
    const std::size_t content = controlFreePrefix(piece.substr(position));
    if (content != 0) {
      layout.column += content;
      position += content;
      layout.endsInReturn = false;
      if (position == piece.size()) break;
    }
    const char control = piece[position++];
    if (control == '\t') {
      m_summary.rule = ColumnRule::Tabs;
      layout.column = afterTab(layout.column);
      layout.endsInReturn = false;
      continue;
    }
    const std::size_t next = size() + position;
    if (control == '\n' && layout.endsInReturn) {
      m_lineStarts.back() = static_cast<std::uint16_t>(next);  // the line after the CR starts after the LF
      layout.endsInReturn = false;
      continue;
    }
    noteLineLength(layout.column);
    addLineStart(next);
    ++layout.lineEnds;
    layout.column = 0;
    layout.endsInReturn = control == '\r';
  }
  noteLineLength(layout.column);
}

void TextBlock::addLineStart(std::size_t offset) {
  m_lineStarts.push_back(static_cast<std::uint16_t>(offset));
  ++m_summary.lineStarts;
}

// `layout` is that of the block's end.
void TextBlock::seal(const TextLayout& layout) {
  m_summary.endColumn = static_cast<std::uint32_t>(std::min<LineColumn>(layout.column, UINT32_MAX));
  m_summary.endsALine = layout.column == 0;
  // A line that would start at the very end starts in the next block instead, so that every row begins in one block.
  if (!m_lineStarts.empty() && m_lineStarts.back() == size() && size() != 0) {
    m_lineStarts.pop_back();
    --m_summary.lineStarts;
  }
  m_lineStarts.shrink_to_fit();
  m_runs.shrink_to_fit();
  m_styles.seal();
}

std::shared_ptr<const TextBlock> TextBlock::copy() const {
  auto copied = std::make_shared<TextBlock>(m_summary.start, m_summary.firstLine, m_summary.startColumn);
  std::memcpy(copied->m_bytes.get(), m_bytes.get(), size());
  copied->m_summary = m_summary;
  copied->m_lineStarts = m_lineStarts;
  copied->m_runs = m_runs;
  copied->m_styles = m_styles;
  return copied;
}

std::string TextBlock::encoded() const {
  HistoryEncoder encoder;
  encoder.addStyles(m_styles.codes(), m_styles.listed());
  for (const StyleRun& run : m_runs) {
    encoder.addRun({.begin = run.begin, .style = run.style});
  }
  return encoder.finish(text());
}

std::shared_ptr<const LineBlock> TextBlock::decoded(const BlockSummary& summary, std::string_view bytes) {
  std::optional<HistoryBlock> content = decodeHistoryBlock(bytes);
  if (!content || content->text.size() != summary.size || summary.size > capacity + 1) return nullptr;
  auto block = std::make_shared<TextBlock>(summary.start, summary.firstLine, summary.startColumn);
  TextLayout layout{.column = summary.startColumn};
  block->append(content->text, layout);
  block->m_styles = BlockStyles(std::move(content->styles), std::move(content->listedStyles));
  block->m_runs.reserve(content->runs.size());
  for (const HistoryRun& run : content->runs) {
    block->m_runs.push_back({.begin = static_cast<std::uint16_t>(run.begin), .style = run.style});
  }
  block->seal(layout);
  return block->m_summary == summary ? block : nullptr;
}

std::shared_ptr<const LineBlock> TextBlock::lost(const BlockSummary& summary) {
  auto block = std::make_shared<TextBlock>(summary.start, summary.firstLine, summary.startColumn);
  TextLayout layout{.column = summary.startColumn};
  block->append(lostText(summary), layout);
  block->m_runs.push_back({.begin = 0, .style = block->m_styles.number(StyleCode())});
  block->seal(layout);
  return block;
}

std::size_t TextBlock::memoryBytes() const {
  return sizeof(TextBlock) + capacity + 1 + m_lineStarts.capacity() * sizeof(std::uint16_t) +
         m_runs.capacity() * sizeof(StyleRun) + m_styles.memoryBytes();
}

void TextBlock::appendRun(std::size_t begin, std::uint16_t style) {
  if (!m_runs.empty() && m_runs.back().style == style) return;
  m_runs.push_back({.begin = static_cast<std::uint16_t>(begin), .style = style});
}

void TextBlock::noteLineLength(LineColumn columns) {
  if (m_lineStarts.empty()) {
    m_summary.continuedEndColumn = columns;
  } else {
    m_summary.longestLine = std::max(m_summary.longestLine, columns);
  }
}

}  // namespace zolt
