#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "find/FindMatch.h"

namespace zolt {

/// What a search of a text has found so far, segment by segment (LogSearch.h), in bounded memory: the number of matches
/// of every segment, and the matches themselves of as many as kKeptMatches allows. What was dropped is searched again
/// when somebody looks there. One thread at a time.
class FindResults {
 public:
  /// The most matches that are kept, but for those of the segment that came last.
  static constexpr std::size_t kKeptMatches = std::size_t{4} << 20;

  /// Takes the matches of a segment that reaches over `extent`, in order, in place of what was known of it.
  void set(std::size_t segment, FindMatch extent, std::vector<FindMatch> matches);
  /// Forgets everything.
  void clear();

  std::uint64_t count() const { return m_count; }
  /// Whether the segment has been searched.
  bool isKnown(std::size_t segment) const { return segment < m_segments.size() && m_segments[segment].known; }
  /// How many matches the segment has; 0 where that is not known.
  std::uint64_t countIn(std::size_t segment) const;
  /// The segment's matches; null where they are not known or not kept.
  const std::vector<FindMatch>* matchesIn(std::size_t segment) const;

  /// Where in the text matches are: each match by itself while there are few, else the parts of segments that have
  /// some, and at last whole segments; in order.
  std::vector<FindMatch> spread() const;

  /// What the matches take in memory, in bytes.
  std::size_t memoryBytes() const;

  /// Where a walk from match to match has come to: a match, a segment that must be searched first, or neither at the
  /// text's end.
  struct Step {
    std::optional<FindMatch> match;
    std::optional<std::size_t> missing;
  };
  /// The last match that begins before `position`, which lies in `segment`.
  Step lastBefore(std::size_t segment, std::uint64_t position) const;
  /// The first match that begins at `position`, which lies in `segment`, or after it, of `segments` in all.
  Step firstFrom(std::size_t segment, std::uint64_t position, std::size_t segments) const;
  /// The number of matches before `position`, which lies in `segment`; nothing while a segment before is not known.
  std::optional<std::uint64_t> countBefore(std::size_t segment, std::uint64_t position) const;

 private:
  struct Segment {
    bool known = false;
    bool kept = false;
    std::uint64_t count = 0;
    FindMatch extent;
    std::uint64_t parts = 0;  // a bit for each 64th of the extent, from its start: whether a match begins there
    std::vector<FindMatch> matches;
  };

  void drop(Segment& segment);
  void keepWithinLimit(std::size_t latest);
  std::optional<Step> stepWithin(std::size_t segment) const;

  std::vector<Segment> m_segments;
  std::uint64_t m_count = 0;
  std::size_t m_kept = 0;      // matches
  std::size_t m_nextDrop = 0;  // where the next segment to drop is looked for, in turn
};

}  // namespace zolt
