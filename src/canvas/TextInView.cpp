#include "canvas/TextInView.h"

#include <algorithm>
#include <utility>

namespace zolt {

namespace {

// A scalar at `at`: its length in UTF-16 code units and in UTF-8.
struct Lengths {
  qsizetype units = 1;
  std::uint64_t bytes = 1;
};

Lengths lengthsAt(const QString& text, qsizetype at) {
  const char16_t unit = text[at].unicode();
  if (unit < 0x80) return {};
  if (unit < 0x800) return {.units = 1, .bytes = 2};
  const bool isPair = QChar::isHighSurrogate(unit) && at + 1 < text.size();
  return isPair ? Lengths{.units = 2, .bytes = 4} : Lengths{.units = 1, .bytes = 3};
}

// The bytes of the whole scalars before `offset`.
std::uint64_t bytesBefore(const QString& text, qsizetype offset) {
  std::uint64_t bytes = 0;
  for (qsizetype at = 0; at < text.size();) {
    const Lengths scalar = lengthsAt(text, at);
    at += scalar.units;
    if (at > offset) break;
    bytes += scalar.bytes;
  }
  return bytes;
}

// The code units of the whole scalars in the first `bytes`.
int unitsIn(const QString& text, std::uint64_t bytes) {
  qsizetype at = 0;
  while (at < text.size()) {
    const Lengths scalar = lengthsAt(text, at);
    if (scalar.bytes > bytes) break;
    bytes -= scalar.bytes;
    at += scalar.units;
  }
  return static_cast<int>(at);
}

}  // namespace

TextInView::TextInView(Rows rows, const std::function<QString(TextRange)>& textOf) : m_rows(std::move(rows)) {
  int start = 0;
  for (const auto& row : m_rows) {
    // A byte for each position: the pieces are all of it.
    const bool isWhole = row->text.size() == row->range.length();
    m_texts.push_back(isWhole ? QString::fromStdString(row->text) : textOf(row->range));
    m_starts.push_back(start);
    start += static_cast<int>(m_texts.back().size()) + 1;
  }
}

int TextInView::length() const {
  return m_rows.empty() ? 0 : m_starts.back() + static_cast<int>(m_texts.back().size());
}

RowPlace TextInView::placeOf(int offset) const {
  const auto after = std::ranges::upper_bound(m_starts, std::max(offset, 0));
  const auto row = static_cast<std::size_t>(after - m_starts.begin() - 1);
  const RowContent& content = *m_rows[row];
  const TextPosition position =
      content.range.begin + bytesBefore(m_texts[static_cast<qsizetype>(row)], offset - m_starts[row]);
  return {.row = row,
          .position = position < content.range.end ? content.characterAt(position).begin : content.range.end};
}

int TextInView::offsetOf(RowPlace place) const {
  const TextRange range = m_rows[place.row]->range;
  const TextPosition position = std::clamp(place.position, range.begin, range.end);
  return m_starts[place.row] + unitsIn(m_texts[static_cast<qsizetype>(place.row)], position - range.begin);
}

OffsetRange TextInView::offsetsOf(TextRange range) const {
  if (m_rows.empty()) return {};
  // The first row that goes on after the beginning, and the first one that reaches the end.
  OffsetRange found{.begin = length(), .end = length()};
  const auto offsetIn = [&](std::size_t row, TextPosition position) {
    const bool isBefore = position < m_rows[row]->range.begin;
    return isBefore ? std::max(m_starts[row] - 1, 0) : offsetOf({.row = row, .position = position});
  };
  for (std::size_t row = m_rows.size(); row-- > 0;) {
    if (range.begin < m_rows[row]->range.end || row + 1 == m_rows.size()) found.begin = offsetIn(row, range.begin);
    if (range.end <= m_rows[row]->range.end) found.end = offsetIn(row, range.end);
  }
  // An empty row that the range begins in has only its line end.
  return {.begin = std::min(found.begin, found.end), .end = found.end};
}

OffsetRange TextInView::characterAt(int offset) const {
  if (offset < 0 || offset >= length()) return {.begin = length(), .end = length()};
  const RowPlace place = placeOf(offset);
  const RowContent& row = *m_rows[place.row];
  const int begin = offsetOf(place);
  if (place.position >= row.range.end) return {.begin = begin, .end = begin + 1};
  return {.begin = begin, .end = offsetOf({.row = place.row, .position = row.characterAt(place.position).end})};
}

OffsetRange TextInView::rowAt(int offset) const {
  if (m_rows.empty()) return {};
  const std::size_t row = placeOf(offset).row;
  const bool isLast = row + 1 == m_rows.size();
  return {.begin = m_starts[row], .end = isLast ? length() : m_starts[row + 1]};
}

}  // namespace zolt
