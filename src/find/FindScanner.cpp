#include "find/FindScanner.h"

#include <algorithm>

#include "find/WordByte.h"

namespace zolt {

namespace {

// Larger chunks are processed in steps of this size, which fit the cache and keep memory bounded.
constexpr std::size_t kStepBytes = 64 << 10;

bool isWordWithin(std::string_view text, FindRange range) {
  return (range.begin == 0 || !isWordByte(text[range.begin - 1])) &&
         (range.end == text.size() || !isWordByte(text[range.end]));
}

}  // namespace

FindScanner::FindScanner(FindPattern pattern, TextPosition start, FindInterrupt* interrupt)
    : m_pattern(std::move(pattern)), m_interrupt(interrupt != nullptr ? interrupt : &m_never), m_position(start) {}

void FindScanner::feed(std::string_view chunk, std::vector<TextRange>& matches) {
  for (; !chunk.empty() && !m_interrupt->hasStopped(); chunk.remove_prefix(std::min(chunk.size(), kStepBytes))) {
    take(chunk.substr(0, kStepBytes), matches);
  }
}

void FindScanner::finish(std::vector<TextRange>& matches) {
  // One more line end completes the last line and adds no match.
  take("\n", matches);
}

void FindScanner::take(std::string_view bytes, std::vector<TextRange>& matches) {
  const std::size_t fresh = m_text.size();
  m_text += bytes;
  if (const auto* needle = std::get_if<PlainNeedle>(&m_pattern.matcher())) {
    findPlain(*needle, matches);
  } else {
    findInLines(std::get<LineExpression>(m_pattern.matcher()), fresh, matches);
  }
  dropSearched();
}

void FindScanner::findPlain(const PlainNeedle& needle, std::vector<TextRange>& matches) {
  // A needle contains no line end, so lines do not matter. A whole word is certain only with the byte after it.
  const std::size_t needed = needle.size() + (m_pattern.wholeWord() ? 1 : 0);
  if (m_text.size() < needed) return;
  const std::string_view text = std::string_view(m_text).substr(0, m_text.size() - needed + needle.size());
  std::size_t at = m_searched;
  while ((at = needle.find(text, at)) != std::string_view::npos) {
    const FindRange range{at, at + needle.size()};
    if (m_pattern.wholeWord() && !isWordWithin(m_text, range)) {
      ++at;
      continue;
    }
    matches.push_back({m_position + range.begin, m_position + range.end});
    m_searched = at = range.end;
  }
  m_searched = std::max(m_searched, m_text.size() - needed + 1);
}

void FindScanner::findInLines(const LineExpression& expression, std::size_t fresh, std::vector<TextRange>& matches) {
  // CR ends a line, too. The empty line that this makes of CR LF has no matches.
  std::replace(m_text.begin() + static_cast<std::ptrdiff_t>(fresh), m_text.end(), '\r', '\n');
  const std::size_t firstEnd = std::min(m_text.find('\n', fresh), m_text.size());
  findInParts(expression, firstEnd, matches);
  if (firstEnd == m_text.size()) return;
  const std::size_t end = m_text.rfind('\n');
  if (!expression.needsOneLine()) {
    findInText(expression, {0, end}, end, end, matches);
  } else {
    while (m_searched < end && !m_interrupt->hasStopped()) {
      const std::size_t lineEnd = m_text.find('\n', m_searched);
      findInText(expression, {lineStart(), lineEnd}, lineEnd, lineEnd, matches);
      m_searched = lineEnd + 1;
    }
  }
  m_searched = end + 1;
}

// Searches all of a long line but its last part. Where the parts end depends on the line alone, not on the chunks.
void FindScanner::findInParts(const LineExpression& expression, std::size_t lineEnd, std::vector<TextRange>& matches) {
  while (lineEnd > m_searched && lineEnd - m_searched > kLongLineBytes) {
    const std::size_t end = m_searched + kLongLineBytes;
    // A match that begins later is found in full in the next part.
    findInText(expression, {lineStart(), lineEnd}, end, end - kOverlapBytes, matches);
    m_searched = std::max(m_searched, end - kOverlapBytes);
  }
}

void FindScanner::findInText(const LineExpression& expression, FindRange text, std::size_t to, std::size_t startsBefore,
                             std::vector<TextRange>& matches) {
  const std::string_view view = std::string_view(m_text).substr(text.begin, text.end - text.begin);
  while (const auto found = expression.find(view, m_searched - text.begin, to - text.begin, *m_interrupt)) {
    const FindRange range{text.begin + found->begin, text.begin + found->end};
    if (range.begin >= startsBefore) return;
    matches.push_back({m_position + range.begin, m_position + range.end});
    m_searched = range.end;
  }
}

// The start of the line that contains m_searched or, if it is no longer held, the byte before m_searched.
std::size_t FindScanner::lineStart() const {
  if (m_searched == 0) return 0;
  const std::size_t previousEnd = m_text.rfind('\n', m_searched - 1);
  return previousEnd == std::string::npos ? 0 : previousEnd + 1;
}

void FindScanner::dropSearched() {
  if (m_searched < 2) return;
  const std::size_t dropped = m_searched - 1;
  m_text.erase(0, dropped);
  m_position = m_position + dropped;
  m_searched = 1;
}

}  // namespace zolt
