#include "find/LogSearch.h"

#include <algorithm>
#include <optional>
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

std::size_t firstSegment(const HistoryText& text) {
  return text.firstBlock() / kSegmentBlocks;
}

std::size_t segmentCount(const HistoryText& text) {
  return (text.endBlock() - 1) / kSegmentBlocks + 1;
}

std::size_t firstOpenSegment(const HistoryText& text) {
  const std::size_t stable = text.stableEnd();
  return stable == 0 ? 0 : (stable - 1) / kSegmentBlocks;
}

std::size_t segmentAt(const HistoryText& text, TextPosition position) {
  return text.blockAt(position) / kSegmentBlocks;
}

TextSnapshot snapshotOfSegments(const HistoryText& text, std::size_t first, std::size_t end) {
  const std::size_t firstBlock = first * kSegmentBlocks;
  return text.snapshot(std::max(text.firstBlock(), firstBlock == 0 ? 0 : firstBlock - 1),
                       std::min(end * kSegmentBlocks + 1, text.endBlock()));
}

TextRange extentOfSegment(const TextSnapshot& snapshot, std::size_t segment) {
  const std::size_t first = std::max(segment * kSegmentBlocks, snapshot.firstBlock());
  const std::size_t end = std::min((segment + 1) * kSegmentBlocks, snapshot.endBlock());
  return {.begin = snapshot.summary(first).start, .end = snapshot.summary(end - 1).end()};
}

std::vector<TextRange> findInSegment(const FindPattern& pattern, const TextSnapshot& snapshot, std::size_t segment,
                                     FindInterrupt& interrupt) {
  const std::size_t first = std::max(segment * kSegmentBlocks, snapshot.firstBlock());
  const std::size_t end = std::min((segment + 1) * kSegmentBlocks, snapshot.endBlock());
  const auto [begin, limit] = extentOfSegment(snapshot, segment);
  std::vector<TextRange> matches;

  std::optional<BlockText> before;
  std::string_view lead;
  if (snapshot.summary(first).continuesALine && first > snapshot.firstBlock()) {
    before = snapshot.text(first - 1);
    lead = lastLine(before->text());
  }
  FindScanner scanner(pattern, begin - lead.size(), &interrupt);
  scanner.feed(lead, matches);
  for (std::size_t block = first; block < end && !interrupt.check(); ++block) {
    scanner.feed(snapshot.text(block).text(), matches);
  }
  if (end < snapshot.endBlock() && snapshot.summary(end).continuesALine) {
    scanner.feed(firstLine(snapshot.text(end).text()), matches);
  }
  scanner.finish(matches);

  const auto startsAt = [](const TextRange& match) { return match.begin; };
  matches.erase(std::ranges::lower_bound(matches, limit, {}, startsAt), matches.end());
  matches.erase(matches.begin(), std::ranges::lower_bound(matches, begin, {}, startsAt));
  return matches;
}

}  // namespace zolt
