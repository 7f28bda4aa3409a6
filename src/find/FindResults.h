#pragma once

#include <cstddef>
#include <cstdint>
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

  /// Sets the matches of a segment, in order, replacing earlier ones. The segment covers `extent` of the text.
  void set(std::size_t segment, TextRange extent, std::vector<TextRange> matches);
  /// Removes everything.
  void clear();

  std::uint64_t count() const { return m_count; }
  /// Whether the segment has been searched.
  bool isKnown(std::size_t segment) const { return segment < m_segments.size() && m_segments[segment].known; }
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

  void drop(Segment& segment);
  void keepWithinLimit(std::size_t latest);
  std::optional<Step> stepToMissing(std::size_t segment) const;

  std::vector<Segment> m_segments;
  std::uint64_t m_count = 0;
  std::size_t m_kept = 0;      // matches
  std::size_t m_nextDrop = 0;  // segments are dropped in turn, from this one
};

}  // namespace zolt
