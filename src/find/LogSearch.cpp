#include "find/LogSearch.h"

#include <algorithm>
#include <string_view>

#include "find/FindScanner.h"

namespace zolt {

namespace {

constexpr std::string_view kLineEnds = "\r\n";

// The last line of the block before a segment, or all of it.
std::string_view lastLine(std::string_view text) {
  const std::size_t lineEnd = text.find_last_of(kLineEnds);
  return lineEnd == std::string_view::npos ? text : text.substr(lineEnd + 1);
}

// The first line of the block after a segment, or all of it.
std::string_view firstLine(std::string_view text) {
  return text.substr(0, text.find_first_of(kLineEnds));
}

}  // namespace

std::size_t segmentCount(const TextStorage& text) {
  return (text.blockCount() - 1) / kSegmentBlocks + 1;
}

std::size_t segmentAt(const TextStorage& text, TextPosition position) {
  return text.blockAt(position) / kSegmentBlocks;
}

TextSnapshot snapshotOfSegments(const TextStorage& text, std::size_t first, std::size_t end) {
  const std::size_t firstBlock = first * kSegmentBlocks;
  return text.snapshot(firstBlock == 0 ? 0 : firstBlock - 1, std::min(end * kSegmentBlocks + 1, text.blockCount()));
}

std::vector<TextRange> findInSegment(const FindPattern& pattern, const TextSnapshot& snapshot, std::size_t segment,
                                     FindInterrupt& interrupt) {
  const std::size_t first = segment * kSegmentBlocks;
  const std::size_t end = std::min(first + kSegmentBlocks, snapshot.endBlock());
  const TextPosition begin = snapshot.summary(first).start;
  const TextPosition limit = snapshot.summary(end - 1).end();
  std::vector<TextRange> matches;

  BlockText before;
  std::string_view lead;
  if (snapshot.summary(first).continuesALine() && first > 0) {
    before = snapshot.text(first - 1);
    lead = lastLine(before.text());
  }
  FindScanner scanner(pattern, begin - lead.size(), &interrupt);
  scanner.feed(lead, matches);
  for (std::size_t block = first; block < end && !interrupt.check(); ++block) {
    scanner.feed(snapshot.text(block).text(), matches);
  }
  if (end < snapshot.endBlock() && snapshot.summary(end).continuesALine()) {
    scanner.feed(firstLine(snapshot.text(end).text()), matches);
  }
  scanner.finish(matches);

  const auto startsAt = [](const TextRange& match) { return match.begin; };
  matches.erase(std::ranges::lower_bound(matches, limit, {}, startsAt), matches.end());
  matches.erase(matches.begin(), std::ranges::lower_bound(matches, begin, {}, startsAt));
  return matches;
}

}  // namespace zolt
