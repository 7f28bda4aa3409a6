#pragma once

#include <cstddef>
#include <vector>

#include "find/FindInterrupt.h"
#include "find/FindPattern.h"
#include "history/HistoryText.h"
#include "text/TextPosition.h"

namespace zolt {

/// A text is searched in segments of this many blocks: about a megabyte, which takes about a millisecond. They can be
/// searched in any order, on any thread. A match belongs to the segment in which it begins.
inline constexpr std::size_t kSegmentBlocks = 16;

/// The number of the first segment of a text, which may have lost some of its blocks.
std::size_t firstSegment(const HistoryText& text);
/// The number of segments from the session's start on, at least 1. Appending to the text changes only those from
/// `firstOpenSegment` on.
std::size_t segmentCount(const HistoryText& text);
/// The first segment whose matches are not final: it, or the block into which its last line is followed, may change.
std::size_t firstOpenSegment(const HistoryText& text);
/// The segment that contains `position`, which lies between text.begin() and text.end().
std::size_t segmentAt(const HistoryText& text, TextPosition position);

/// The part of the text needed to search the segments from `first` to `end` (not included).
TextSnapshot snapshotOfSegments(const HistoryText& text, std::size_t first, std::size_t end);
/// What a segment covers of it.
TextRange extentOfSegment(const TextSnapshot& snapshot, std::size_t segment);

/// The matches that begin in `segment`, in order, or some of them if `interrupt` stops the search.
///
/// Its first line may have begun before it, and its last line may continue after it. They are searched up to one block
/// (65,280 bytes) to either side. In longer lines a match longer than that may be missed, and a different one of
/// several overlapping matches may be chosen than if the line were searched as a whole.
std::vector<TextRange> findInSegment(const FindPattern& pattern, const TextSnapshot& snapshot, std::size_t segment,
                                     FindInterrupt& interrupt);

}  // namespace zolt
