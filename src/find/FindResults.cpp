#include "find/FindResults.h"

#include <algorithm>
#include <utility>

namespace zolt {

namespace {

// More than a scroll bar can show.
constexpr std::uint64_t kSpreadMatches = 4096;
constexpr std::size_t kSpreadParts = 64;  // as many segments at most are shown in parts

std::uint64_t partsWithMatches(const TextRange& extent, const std::vector<TextRange>& matches) {
  const std::uint64_t length = std::max<std::uint64_t>(extent.length(), 1);
  std::uint64_t parts = 0;
  for (const TextRange& match : matches) {
    parts |= std::uint64_t{1} << ((match.begin - extent.begin) * 64 / length);
  }
  return parts;
}

}  // namespace

void FindResults::set(std::size_t segment, TextRange extent, std::vector<TextRange> matches) {
  if (segment < m_first) return;
  if (!isHeld(segment)) m_segments.resize(segment - m_first + 1);
  matches.shrink_to_fit();
  Segment& known = at(segment);
  drop(known);
  m_count += matches.size();
  m_count -= known.count;
  m_kept += matches.size();
  known = {.known = true,
           .kept = true,
           .count = matches.size(),
           .extent = extent,
           .parts = partsWithMatches(extent, matches),
           .matches = std::move(matches)};
  keepWithinLimit(segment - m_first);
}

void FindResults::clear() {
  *this = FindResults();
}

void FindResults::forget(Segment& segment) {
  drop(segment);
  m_count -= segment.count;
  segment = {};
}

// Forgets some of the matches of a segment, which now covers `extent`. If they were not kept, it has to be searched
// again.
template <class IsGone>
void FindResults::erase(Segment& segment, TextRange extent, IsGone isGone) {
  if (!segment.kept) return forget(segment);
  const std::size_t erased = std::erase_if(segment.matches, isGone);
  m_kept -= erased;
  m_count -= erased;
  segment.count -= erased;
  segment.extent = extent;
  segment.parts = partsWithMatches(extent, segment.matches);
}

void FindResults::forgetBefore(std::size_t segment, TextPosition position) {
  while (m_first < segment && !m_segments.empty()) {
    forget(m_segments.front());
    m_segments.pop_front();
    ++m_first;
  }
  m_first = std::max(m_first, segment);
  if (!isKnown(m_first)) return;
  Segment& front = m_segments.front();
  if (front.extent.begin >= position) return;
  erase(front, {.begin = std::min(position, front.extent.end), .end = front.extent.end},
        [&](const TextRange& match) { return match.begin < position; });
}

void FindResults::forgetAfter(std::size_t segment, TextPosition position) {
  while (endSegment() > segment && !m_segments.empty()) {
    forget(m_segments.back());
    m_segments.pop_back();
  }
  for (auto last = m_segments.rbegin(); last != m_segments.rend(); ++last) {
    if (!last->known) continue;
    const TextRange extent = last->extent;
    const bool isCut = extent.end > position;
    // A match may reach from its segment into the next.
    if (isCut || (!last->matches.empty() && last->matches.back().end > position)) {
      erase(*last, {.begin = std::min(extent.begin, position), .end = std::min(extent.end, position)},
            [&](const TextRange& match) { return match.end > position; });
    }
    if (!isCut) return;
  }
}

void FindResults::drop(Segment& segment) {
  if (!segment.kept) return;
  m_kept -= segment.matches.size();
  std::vector<TextRange>().swap(segment.matches);  // frees the memory, which an assignment of {} would keep
  segment.kept = false;
}

void FindResults::keepWithinLimit(std::size_t latest) {
  for (std::size_t looked = 0; m_kept > kKeptMatches && looked < m_segments.size(); ++looked) {
    m_nextDrop = (m_nextDrop + 1) % m_segments.size();
    // Dropping an empty one would free nothing.
    if (m_nextDrop != latest && m_segments[m_nextDrop].count != 0) drop(m_segments[m_nextDrop]);
  }
}

std::uint64_t FindResults::countIn(std::size_t segment) const {
  return isHeld(segment) ? at(segment).count : 0;
}

const std::vector<TextRange>* FindResults::matchesIn(std::size_t segment) const {
  return isHeld(segment) && at(segment).kept ? &at(segment).matches : nullptr;
}

std::size_t FindResults::memoryBytes() const {
  std::size_t bytes = 0;
  for (const Segment& segment : m_segments) {
    bytes += segment.matches.capacity() * sizeof(TextRange);
  }
  return bytes;
}

std::vector<TextRange> FindResults::spread() const {
  std::vector<TextRange> places;
  for (const Segment& segment : m_segments) {
    if (segment.count == 0) continue;
    if (m_count <= kSpreadMatches && segment.kept) {
      places.insert(places.end(), segment.matches.begin(), segment.matches.end());
    } else if (m_segments.size() <= kSpreadParts) {
      const std::uint64_t length = segment.extent.length();
      for (std::uint64_t part = 0; part < 64; ++part) {
        if ((segment.parts >> part & 1) == 0) continue;
        places.push_back({segment.extent.begin + part * length / 64, segment.extent.begin + (part + 1) * length / 64});
      }
    } else {
      places.push_back(segment.extent);
    }
  }
  return places;
}

// A step to `segment` if it has to be searched first; nothing if its matches are available.
std::optional<FindResults::Step> FindResults::stepToMissing(std::size_t segment) const {
  if (matchesIn(segment) != nullptr) return std::nullopt;
  return Step{.match = {}, .missing = segment};
}

FindResults::Step FindResults::lastBefore(std::size_t segment, TextPosition position) const {
  for (std::size_t i = segment + 1; i-- > m_first;) {
    if (isKnown(i) && at(i).count == 0) continue;
    if (const auto missing = stepToMissing(i)) return *missing;
    const std::vector<TextRange>& matches = at(i).matches;
    const auto after = std::ranges::lower_bound(matches, position, {}, &TextRange::begin);
    if (after != matches.begin()) return {.match = *(after - 1), .missing = {}};
  }
  return {};
}

FindResults::Step FindResults::firstFrom(std::size_t segment, TextPosition position, std::size_t segments) const {
  for (std::size_t i = segment; i < segments; ++i) {
    if (isKnown(i) && at(i).count == 0) continue;
    if (const auto missing = stepToMissing(i)) return *missing;
    const std::vector<TextRange>& matches = at(i).matches;
    const auto found = std::ranges::lower_bound(matches, position, {}, &TextRange::begin);
    if (found != matches.end()) return {.match = *found, .missing = {}};
  }
  return {};
}

std::optional<std::uint64_t> FindResults::countBefore(std::size_t segment, TextPosition position) const {
  std::uint64_t count = 0;
  for (std::size_t i = m_first; i < segment; ++i) {
    if (!isKnown(i)) return std::nullopt;
    count += at(i).count;
  }
  const std::vector<TextRange>* matches = matchesIn(segment);
  if (matches == nullptr) return std::nullopt;
  return count + static_cast<std::uint64_t>(std::ranges::lower_bound(*matches, position, {}, &TextRange::begin) -
                                            matches->begin());
}

}  // namespace zolt
