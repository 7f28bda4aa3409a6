#include "vt/history/HistoryLine.h"

#include <algorithm>
#include <string_view>

namespace zolt::vt {

namespace {

LinkTarget unpackedLink(std::string_view text) {
  const std::size_t end = std::min(text.find('\n'), text.size());
  return {.id = std::string(text.substr(0, end)), .uri = std::string(text.substr(std::min(end + 1, text.size())))};
}

HistoryLine::Run runOf(const HistoryBlock& block, const HistoryRun& run, std::size_t length) {
  return {
      .length = length,
      .style = run.style < block.packedStyles.size() ? unpackedStyle(block.packedStyles[run.style]) : Style(),
      .link = run.link != 0 && run.link <= block.links.size() ? unpackedLink(block.links[run.link - 1]) : LinkTarget()};
}

}  // namespace

Style unpackedStyle(const PackedStyle& style) {
  const std::uint32_t underline = std::min<std::uint32_t>(style.rendition >> 16, 5);
  return {.foreground = CellColor::fromBits(style.foreground),
          .background = CellColor::fromBits(style.background),
          .underlineColor = CellColor::fromBits(style.underlineColor),
          .flags = static_cast<std::uint16_t>(style.rendition & 0xFFFF),
          .underline = static_cast<Underline>(underline)};
}

PackedStyle packedStyle(const Style& style) {
  return {.foreground = style.foreground.bits(),
          .background = style.background.bits(),
          .underlineColor = style.underlineColor.bits(),
          .rendition = static_cast<std::uint32_t>(style.flags) | static_cast<std::uint32_t>(style.underline) << 16};
}

// ID and URI on two lines: neither can contain a line feed.
std::string packedLink(const LinkTarget& target) {
  return target.id + '\n' + target.uri;
}

HistoryLine historyLine(const HistoryBlock& block, std::size_t begin, std::size_t end) {
  HistoryLine line{.text = block.text.substr(begin, end - begin)};
  auto run = std::ranges::upper_bound(block.runs, begin, {}, &HistoryRun::begin);
  if (run != block.runs.begin()) --run;
  for (; run != block.runs.end() && run->begin < end; ++run) {
    const std::size_t runEnd = run + 1 == block.runs.end() ? end : std::min<std::size_t>((run + 1)->begin, end);
    const std::size_t runBegin = std::max<std::size_t>(run->begin, begin);
    if (runEnd > runBegin) line.runs.push_back(runOf(block, *run, runEnd - runBegin));
  }
  auto mark = std::ranges::lower_bound(block.marks, begin, {}, &HistoryMark::offset);
  for (; mark != block.marks.end() && mark->offset <= end; ++mark) {
    line.marks.push_back(*mark);
    line.marks.back().offset -= static_cast<std::uint32_t>(begin);
  }
  return line;
}

}  // namespace zolt::vt
