#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "text/TextPosition.h"

namespace zolt {

/// The results so far of searching a text segment by segment (LogSearch.h), in bounded memory: the number of matches in
/// each segment, and the matches themselves in as many segments as kKeptMatches allows. Others have to be searched
/// again when their matches are needed. One thread at a time.
class FindResults {
 public:
  /// The maximum number of matches kept, apart from those of the latest segment.
  static constexpr std::size_t kKeptMatches = std::size_t{4} << 20;

  /// Sets the matches of a segment, in order, replacing earlier ones. The segment covers `extent` of the text. Ignored
  /// for a segment that was forgotten at the front.
  void set(std::size_t segment, TextRange extent, std::vector<TextRange> matches);
  /// Removes everything.
  void clear();
  /// Forgets the matches in segments before `segment`, for good, and others that begin before `position`.
  void forgetBefore(std::size_t segment, TextPosition position);
  /// Forgets the matches in segments from `segment` on, and others that end after `position`.
  void forgetAfter(std::size_t segment, TextPosition position);

  std::uint64_t count() const { return m_count; }
  /// Whether the segment has been searched.
  bool isKnown(std::size_t segment) const { return isHeld(segment) && at(segment).known; }
  /// The number of matches in the segment; 0 if it has not been searched.
  std::uint64_t countIn(std::size_t segment) const;
  /// The matches in the segment; null if they are not known or were not kept.
  const std::vector<TextRange>* matchesIn(std::size_t segment) const;

  /// Where in the text there are matches, in order, for a scroll bar: the matches themselves while there are few,
  /// otherwise the parts of segments that have some, or whole segments.
  std::vector<TextRange> spread() const;

  /// The memory used by the matches, in bytes.
  std::size_t memoryBytes() const;

  /// The result of moving from match to match: a match, or a segment that must be searched first, or neither at the end
  /// of the text.
  struct Step {
    std::optional<TextRange> match;
    std::optional<std::size_t> missing;
  };
  /// The last match that begins before `position`, which lies in `segment`.
  Step lastBefore(std::size_t segment, TextPosition position) const;
  /// The first match that begins at or after `position`, which lies in `segment`, of `segments` in total.
  Step firstFrom(std::size_t segment, TextPosition position, std::size_t segments) const;
  /// The number of matches before `position`, which lies in `segment`; nothing if any of these segments is missing.
  std::optional<std::uint64_t> countBefore(std::size_t segment, TextPosition position) const;

 private:
  struct Segment {
    bool known = false;
    bool kept = false;
    std::uint64_t count = 0;
    TextRange extent;
    std::uint64_t parts = 0;  // a bit for each 64th of the extent: whether a match begins there
    std::vector<TextRange> matches;
  };

  std::size_t endSegment() const { return m_first + m_segments.size(); }
  bool isHeld(std::size_t segment) const { return segment >= m_first && segment < endSegment(); }
  Segment& at(std::size_t segment) { return m_segments[segment - m_first]; }
  const Segment& at(std::size_t segment) const { return m_segments[segment - m_first]; }
  void drop(Segment& segment);
  void forget(Segment& segment);
  template <class IsGone>
  void erase(Segment& segment, TextRange extent, IsGone isGone);
  void keepWithinLimit(std::size_t latest);
  std::optional<Step> stepToMissing(std::size_t segment) const;

  std::size_t m_first = 0;  // the number of the first segment held
  std::deque<Segment> m_segments;
  std::uint64_t m_count = 0;
  std::size_t m_kept = 0;      // matches
  std::size_t m_nextDrop = 0;  // segments held are dropped in turn, from this one
};

}  // namespace zolt
