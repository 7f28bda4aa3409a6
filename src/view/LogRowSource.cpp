#include "view/LogRowSource.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace zolt {

namespace {

constexpr int kColumnsBeforeLayout = 80;
// Blocks counted per background step: a few tenths of a millisecond, as each may have to be fetched.
constexpr std::size_t kRefinedAtOnce = 4;
// How far a word is followed in either direction.
constexpr std::uint64_t kLongestWord = 4096;

// The characters of names, paths and URLs.
bool isWordCharacter(char c) {
  return (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') ||
         std::string_view("_-./~@+%:").find(c) != std::string_view::npos;
}

QRgb toRgb(const Color& color) {
  const auto byte = [](double component) {
    return static_cast<int>(std::lround(std::clamp(component, 0.0, 1.0) * 255));
  };
  return qRgba(byte(color.red), byte(color.green), byte(color.blue), byte(color.alpha));
}

CellLook lookOf(const TextAttributes& attributes) {
  return {.foreground = attributes.foreground.alpha <= 0 ? 0 : toRgb(attributes.foreground),
          .background = attributes.background ? toRgb(*attributes.background) : 0,
          .weight = attributes.font.weight,
          .slant = attributes.font.slant,
          .underline = attributes.underline == Line::Single ? LineStyle::Single : LineStyle::None,
          .struck = attributes.strikethrough == Line::Single};
}

}  // namespace

LogRowSource::LogRowSource(const TextStorage& storage) : m_storage(storage), m_index(storage, kColumnsBeforeLayout) {}

bool LogRowSource::refine() {
  return m_index.refine(kRefinedAtOnce);
}

std::shared_ptr<const RowContent> LogRowSource::content(CanvasRow row) {
  const RowIndex::Row located = m_index.locate(row.value);
  auto made = std::make_shared<RowContent>();
  RowContent& content = *made;
  content.range = {.begin = located.begin, .end = located.end};
  LineColumn column = located.beginColumn;
  const auto inRow = [&](LineColumn at) {
    return CanvasColumn(
        static_cast<int>(std::min<LineColumn>(at - located.firstColumn, static_cast<LineColumn>(columns()))));
  };
  content.steps.push_back({.position = located.begin, .column = inRow(column)});
  m_storage.forEachRun(located.begin, located.end,
                       [&](TextPosition position, std::string_view text, const TextAttributes& attributes) {
                         const CellLook look = lookOf(attributes);
                         while (!text.empty()) {
                           const std::size_t plain = std::min(text.find('\t'), text.size());
                           if (plain != 0) {
                             content.addText(inRow(column), text.substr(0, plain), look);
                             column += plain;
                             position = position + plain;
                             text.remove_prefix(plain);
                           } else {
                             // A tab becomes blanks in its style, so that background and underline show.
                             const LineColumn after = afterTab(column);
                             content.addBlank({.begin = inRow(column), .end = inRow(after)}, look);
                             column = after;
                             position = position + 1;
                             content.steps.push_back({.position = position, .column = inRow(column)});
                             text.remove_prefix(1);
                           }
                         }
                       });
  content.end = inRow(std::max(column, located.firstColumn));
  // Nothing in a log changes, but lost text, which is noticed when it is read, shows as a notice.
  content.stamp = {
      .identity = located.begin.value, .extent = located.end.value, .version = m_storage.lostBlocks().size()};
  return made;
}

TextRange LogRowSource::rowRange(CanvasRow row) {
  const RowIndex::Row located = m_index.locate(row.value);
  return {.begin = located.begin, .end = located.end};
}

std::string LogRowSource::text(TextRange range) const {
  std::string copied = m_storage.text(range.begin, range.end);
  std::size_t kept = 0;
  for (std::size_t i = 0; i < copied.size(); ++i) {
    if (copied[i] == '\r') {
      copied[kept++] = '\n';
      if (i + 1 < copied.size() && copied[i + 1] == '\n') ++i;
    } else {
      copied[kept++] = copied[i];
    }
  }
  copied.resize(kept);
  return copied;
}

TextRange LogRowSource::wordAt(TextPosition position) const {
  if (position >= end()) return {.begin = end(), .end = end()};
  const TextPosition from = position.backBy(kLongestWord);
  const std::string around = m_storage.text(from, std::min(position + kLongestWord, m_storage.end()));
  auto begin = static_cast<std::size_t>(position - from);
  std::size_t end = begin + 1;
  if (isWordCharacter(around[begin])) {
    while (begin > 0 && isWordCharacter(around[begin - 1])) {
      --begin;
    }
    while (end < around.size() && isWordCharacter(around[end])) {
      ++end;
    }
  }
  return {.begin = from + begin, .end = from + end};
}

TextRange LogRowSource::lineAt(TextPosition position) const {
  const std::uint64_t line = m_storage.lineAt(position);
  const TextPosition end = line + 1 < m_storage.lineCount() ? m_storage.lineStart(line + 1) : m_storage.end();
  return {.begin = m_storage.lineStart(line), .end = end};
}

}  // namespace zolt
