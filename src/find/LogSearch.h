#pragma once

#include <cstddef>
#include <vector>

#include "find/FindInterrupt.h"
#include "find/FindPattern.h"
#include "history/TextStorage.h"
#include "text/TextPosition.h"

namespace zolt {

/// A text is searched in segments of this many blocks: about a megabyte, which takes about a millisecond. They can be
/// searched in any order, on any thread. A match belongs to the segment in which it begins.
inline constexpr std::size_t kSegmentBlocks = 16;

/// The number of segments of a text, at least 1. Appending to the text changes only the last two.
std::size_t segmentCount(const TextStorage& text);
/// The segment that contains `position` <= text.size().
std::size_t segmentAt(const TextStorage& text, TextPosition position);

/// The part of the text needed to search the segments from `first` to `end` (not included).
TextSnapshot snapshotOfSegments(const TextStorage& text, std::size_t first, std::size_t end);

/// The matches that begin in `segment`, in order, or some of them if `interrupt` stops the search.
///
/// Its first line may have begun before it, and its last line may continue after it. They are searched up to one block
/// (65,280 bytes) to either side. In longer lines a match longer than that may be missed, and a different one of
/// several overlapping matches may be chosen than if the line were searched as a whole.
std::vector<TextRange> findInSegment(const FindPattern& pattern, const TextSnapshot& snapshot, std::size_t segment,
                                     FindInterrupt& interrupt);

}  // namespace zolt
