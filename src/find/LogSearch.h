#pragma once

#include <cstddef>
#include <vector>

#include "find/FindInterrupt.h"
#include "find/FindMatch.h"
#include "find/FindPattern.h"
#include "history/TextStorage.h"

namespace zolt {

/// A text is searched in segments of so many blocks: about a megabyte, which takes about a millisecond. Each is found
/// in by itself, in any order, on any thread; what begins in it is its own.
inline constexpr std::size_t kSegmentBlocks = 16;

/// The segments of a text, at least one; only the last two still change when text is appended.
std::size_t segmentCount(const TextStorage& text);
/// The segment that holds `position`, at most `text.size()`.
std::size_t segmentAt(const TextStorage& text, TextPosition position);

/// What has to be at hand to search the segments from `first` to `end` (not included).
TextSnapshot snapshotOfSegments(const TextStorage& text, std::size_t first, std::size_t end);

/// The matches that begin in `segment`, in order; part of them when `interrupt` was given meanwhile.
///
/// Its first line may have begun before it, and its last one may go on. As far as a block (65,280 bytes) to either side
/// they are looked at, so that a line is searched as a whole; in longer lines, a match longer than that may be missed,
/// and where matches could overlap the choice among them may change from one segment to the next.
std::vector<FindMatch> findInSegment(const FindPattern& pattern, const TextSnapshot& snapshot, std::size_t segment,
                                     FindInterrupt& interrupt);

}  // namespace zolt
