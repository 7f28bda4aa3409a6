#include "terminal/EmulationSource.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "canvas/DrawnSymbols.h"
#include "terminal/input/WordBounds.h"
#include "terminal/links/LinkFinder.h"
#include "text/Utf8.h"
#include "vt/history/TailBuilder.h"
#include "vt/history/TextUnits.h"

namespace zolt {

namespace {

// The alternate screen's places: behind all that a session can print.
constexpr TextPosition kAlternateStart(std::uint64_t{1} << 63);
// How far words and links are followed to either side.
constexpr std::uint64_t kNear = 4096;
// The rows of a few screens are kept ready for painting.
constexpr std::size_t kMaxContents = 1024;

std::shared_ptr<const vt::ScreenSnapshot> blankScreen() {
  static const std::shared_ptr<const vt::ScreenSnapshot> blank = vt::Terminal({.rows = 1, .columns = 1}).snapshot();
  return blank;
}

// A history without text, which the alternate screen follows.
vt::ScrollbackView nothingBeforeAlternate() {
  const vt::ScrollbackView& blank = blankScreen()->history;
  return {blank.sealed(),
          {{.content = blank.tail().back().content, .start = {.position = kAlternateStart}}},
          kAlternateStart,
          kAlternateStart,
          0,
          0};
}

bool isContinuation(char byte) {
  return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// Adds the pieces of text in one style: ASCII as it is, every other unit on its own.
class PieceWriter {
 public:
  PieceWriter(RowContent& content, CellLooks& looks) : m_content(content), m_looks(looks) {}

  void addAscii(std::string_view text, const vt::Style& style) {
    if (text.empty()) return;
    m_content.addText(m_column, text, m_looks.look(style, false));
    m_column = m_column + static_cast<int>(text.size());
    m_position = m_position + text.size();
  }

  void addCluster(std::string_view text, int columns, const vt::Style& style) {
    const ColumnRange range{.begin = m_column, .end = m_column + columns};
    std::size_t length = 0;
    const char32_t first = scalarAt(text, 0, length);
    const bool isGraphic = length == text.size() && isDrawnSymbol(first);
    m_content.addCluster(range, text, m_looks.look(style, isGraphic));
    m_content.steps.push_back({.position = m_position, .column = m_column, .isUnit = true});
    m_column = range.end;
    m_position = m_position + text.size();
    m_content.steps.push_back({.position = m_position, .column = m_column});
  }

  void start(TextPosition position, CanvasColumn column) {
    m_position = position;
    m_column = column;
    m_content.steps.push_back({.position = position, .column = column});
  }
  CanvasColumn column() const { return m_column; }

 private:
  RowContent& m_content;
  CellLooks& m_looks;
  TextPosition m_position;
  CanvasColumn m_column;
};

CursorLook lookOf(vt::CursorShape shape) {
  switch (shape) {
    case vt::CursorShape::Block:
      return CursorLook::Block;
    case vt::CursorShape::Underline:
      return CursorLook::Underline;
    case vt::CursorShape::Bar:
      return CursorLook::Bar;
  }
  return CursorLook::Block;
}

// Black or white, whichever is read better on `color`.
QRgb readableOn(QRgb color) {
  return qGray(color) > 140 ? qRgb(0, 0, 0) : qRgb(255, 255, 255);
}

}  // namespace

EmulationSource::EmulationSource(Emulator& emulator)
    : m_emulator(emulator),
      m_screen(blankScreen()),
      m_history(m_screen->history),
      m_rows(m_history, m_screen->size.columns),
      m_wordSeparators(kWordSeparators) {
  show(m_screen);
}

void EmulationSource::sync() {
  Emulator::Update update = m_emulator.take();
  m_before = m_lines;
  if (!update.snapshot) return;
  show(std::move(update.snapshot));
  if (onEvents) onEvents(update.events);
  if (onScreen) onScreen();
}

void EmulationSource::show(std::shared_ptr<const vt::ScreenSnapshot> screen) {
  const bool isOther = screen->isAlternate != m_screen->isAlternate || screen->rows.size() != m_screen->rows.size();
  m_screen = std::move(screen);
  m_history.show(m_screen->history);
  m_rows.setColumns(m_screen->size.columns);
  m_rows.sync();
  const vt::ScrollbackView& history = m_screen->history;
  if (m_screen->isAlternate) {
    m_lines = ScreenLines(m_screen->rows, kAlternateStart, 0, kAlternateStart);
  } else if (m_screen->continuesHistory) {
    const std::uint64_t line = history.endLine() - 1;
    m_lines = ScreenLines(m_screen->rows, history.end(), line, m_history.lineStart(line));
  } else {
    m_lines = ScreenLines(m_screen->rows, history.end(), history.endLine(), history.end());
  }
  if (isOther) ++m_generation;
  m_looks.setPalette(m_screen->palette, m_screen->reverseScreen);
}

TextPosition EmulationSource::moved(TextPosition position) const {
  const bool isSameSpace = (m_before.start() < kAlternateStart) == (m_lines.start() < kAlternateStart);
  if (!isSameSpace) return position;
  if (position < m_history.begin()) return m_history.begin();
  return m_lines.moved(m_before, position);
}

std::shared_ptr<const RowContent> EmulationSource::content(CanvasRow row) {
  const std::int64_t history = historyRows();
  if (row.value < history) return historyContent(row);
  return screenContent(static_cast<std::size_t>(std::min<std::int64_t>(row.value - history, screenRows() - 1)));
}

std::shared_ptr<const RowContent> EmulationSource::screenContent(std::size_t row) {
  if (m_looksVersion != m_looks.version() || m_contents.size() > kMaxContents) {
    m_contents.clear();
    m_looksVersion = m_looks.version();
  }
  const vt::SnapshotRow& shown = *m_screen->rows[row];
  const TextRange range = m_lines.range(row);
  std::shared_ptr<const RowContent>& kept = m_contents[shown.stamp];
  if (kept && kept->range == range) return kept;

  auto made = std::make_shared<RowContent>();
  made->range = range;
  made->stamp = {.identity = shown.stamp, .extent = 0, .version = m_looks.version()};
  PieceWriter writer(*made, m_looks);
  writer.start(range.begin, CanvasColumn(0));
  std::size_t at = 0;
  auto cluster = shown.clusters.begin();
  for (const vt::SnapshotRow::Run& run : shown.runs) {
    const std::size_t end = at + run.bytes;
    while (at < end) {
      const std::size_t plain = cluster == shown.clusters.end() ? end : std::min<std::size_t>(cluster->begin, end);
      writer.addAscii(std::string_view(shown.text).substr(at, plain - at), run.style);
      at = plain;
      if (at == end) break;
      writer.addCluster(std::string_view(shown.text).substr(at, cluster->end - cluster->begin), cluster->columns,
                        run.style);
      at = cluster->end;
      ++cluster;
    }
  }
  made->end = CanvasColumn(shown.columns);
  kept = std::move(made);
  return kept;
}

std::shared_ptr<const RowContent> EmulationSource::historyContent(CanvasRow row) {
  const RowIndex::Row located = m_rows.locate(row.value);
  auto made = std::make_shared<RowContent>();
  made->range = {.begin = located.begin, .end = located.end};
  made->stamp = {.identity = located.begin.value,
                 .extent = located.end.value,
                 .version = m_looks.version() << 16 | (m_history.lostBlocks().size() & 0xFFFF)};
  PieceWriter writer(*made, m_looks);
  writer.start(located.begin, CanvasColumn(static_cast<int>(located.beginColumn - located.firstColumn)));
  const vt::HistoryLine part = m_history.part(located.begin, located.end);
  const bool clusters = m_history.summary(m_history.blockAt(located.begin)).rule == ColumnRule::Clusters;
  std::size_t at = 0;
  for (const vt::HistoryLine::Run& run : part.runs) {
    const std::size_t end = std::min(at + run.length, part.text.size());
    std::size_t plain = at;
    while (at < end) {
      const vt::TextUnit unit = vt::unitAt(part.text, at, clusters);
      if (unit.size == 1) {
        ++at;
        continue;
      }
      writer.addAscii(std::string_view(part.text).substr(plain, at - plain), run.style);
      writer.addCluster(std::string_view(part.text).substr(at, unit.size), unit.width, run.style);
      at += unit.size;
      plain = at;
    }
    if (plain < end) writer.addAscii(std::string_view(part.text).substr(plain, end - plain), run.style);
  }
  made->end = writer.column();
  return made;
}

TextRange EmulationSource::rowRange(CanvasRow row) {
  const std::int64_t history = historyRows();
  if (row.value < history) {
    const RowIndex::Row located = m_rows.locate(row.value);
    return {.begin = located.begin, .end = located.end};
  }
  return m_lines.range(static_cast<std::size_t>(std::min<std::int64_t>(row.value - history, screenRows() - 1)));
}

CanvasRow EmulationSource::rowAt(TextPosition position) {
  if (isOnScreen(position)) return CanvasRow(historyRows() + static_cast<std::int64_t>(m_lines.rowAt(position)));
  return historyRows() == 0 ? CanvasRow(0) : CanvasRow(m_rows.rowAt(position));
}

CanvasRow EmulationSource::roughRowAt(TextPosition position) const {
  if (isOnScreen(position)) return CanvasRow(historyRows() + static_cast<std::int64_t>(m_lines.rowAt(position)));
  return historyRows() == 0 ? CanvasRow(0) : CanvasRow(m_rows.roughRowAt(position));
}

std::optional<CanvasCursor> EmulationSource::cursor() const {
  const vt::SnapshotCursor& shown = m_screen->cursor;
  const QRgb color = m_looks.cursorColor();
  const CanvasColumn column(shown.position.column);
  return CanvasCursor{.row = CanvasRow(historyRows() + shown.position.row),
                      .columns = {.begin = column, .end = column + shown.columns},
                      .look = lookOf(shown.style.shape),
                      .color = color,
                      .text = readableOn(color),
                      .isShown = shown.isVisible,
                      .blinks = shown.style.blinks};
}

TextPosition EmulationSource::begin() const {
  return m_screen->isAlternate ? m_lines.start() : m_history.begin();
}

// The blank rows below the text and the cursor are no text.
TextPosition EmulationSource::end() const {
  std::size_t last = m_lines.rowCount() - 1;
  while (last > static_cast<std::size_t>(m_screen->cursor.position.row) && m_screen->rows[last]->text.empty()) {
    --last;
  }
  return m_lines.range(last).end;
}

// As it is in the engine: with the blanks at the ends of lines.
std::string EmulationSource::rawText(TextRange range) const {
  std::string text;
  if (range.begin < m_history.end()) text = m_history.text(range.begin, std::min(range.end, m_history.end()));
  if (!isOnScreen(range.end) || range.empty()) return text;
  for (std::size_t row = m_lines.rowAt(range.begin); row < m_lines.rowCount(); ++row) {
    const TextRange place = m_lines.range(row);
    if (place.begin >= range.end) break;
    const TextPosition from = std::max(range.begin, place.begin);
    const TextPosition to = std::min(range.end, place.end);
    if (from < to) {
      text += std::string_view(m_screen->rows[row]->text).substr(from - place.begin, to - from);
    }
    if (range.end > place.end && range.begin <= place.end && m_lines.endsLine(row)) text += '\n';
  }
  return text;
}

std::string EmulationSource::text(TextRange range) const {
  const std::string raw = rawText(range);
  std::string text;
  text.reserve(raw.size());
  for (const char character : raw) {
    if (character == '\n') text.resize(text.find_last_not_of(' ') + 1);
    text += character;
  }
  return text;
}

std::string EmulationSource::copiedText(TextRange range) const {
  std::string copied = text(range);
  if (range.end >= end() || rawText({.begin = range.end, .end = range.end + 1}) == "\n") {
    copied.resize(copied.find_last_not_of(' ') + 1);
  }
  return copied;
}

TextRange EmulationSource::lineAt(TextPosition position) const {
  const bool continues = !m_screen->isAlternate && m_screen->continuesHistory;
  const auto endOnScreen = [&](std::size_t row) {
    const std::size_t last = m_lines.rowsOfLine(row).last;
    return m_lines.range(last).end + (m_lines.endsLine(last) ? 1 : 0);
  };
  if (isOnScreen(position)) {
    const std::size_t row = m_lines.rowAt(position);
    const std::size_t first = m_lines.rowsOfLine(row).first;
    const bool isBegun = first == 0 && continues;
    return {.begin = isBegun ? m_history.lineStart(m_history.endLine() - 1) : m_lines.range(first).begin,
            .end = endOnScreen(row)};
  }
  const std::uint64_t line = m_history.lineAt(position);
  const bool isLast = line + 1 == m_history.endLine();
  return {.begin = m_history.lineStart(line),
          .end = isLast ? (continues ? endOnScreen(0) : m_history.end()) : m_history.lineStart(line + 1)};
}

TextRange EmulationSource::near(TextPosition position) const {
  return near(lineAt(position), {.begin = position, .end = position});
}

TextRange EmulationSource::near(TextRange line, TextRange range) const {
  TextRange part{.begin = std::max(line.begin, range.begin.backBy(kNear)),
                 .end = std::min(line.end, range.end + kNear)};
  // Not from the middle of a character.
  const std::string start = rawText({.begin = part.begin, .end = std::min(part.begin + 4, part.end)});
  for (std::size_t i = 0; i < start.size() && isContinuation(start[i]); ++i) {
    part.begin = part.begin + 1;
  }
  return part;
}

TextRange EmulationSource::wordAt(TextPosition position) const {
  const TextRange line = near(position);
  std::string text = rawText(line);
  if (text.ends_with('\n')) text.pop_back();
  const ByteRange word = zolt::wordAt(text, static_cast<std::size_t>(position - line.begin), m_wordSeparators);
  return {.begin = line.begin + word.begin, .end = line.begin + word.end};
}

TextPosition EmulationSource::characterBefore(TextPosition position) const {
  const TextPosition from = std::max(position.backBy(4), begin());
  const std::string bytes = rawText({.begin = from, .end = position});
  std::size_t back = 1;
  while (back < bytes.size() && isContinuation(bytes[bytes.size() - back])) {
    ++back;
  }
  return position.backBy(std::min(back, bytes.size()));
}

// OSC 8. Characters that follow each other and lead to the same target are one link.
std::vector<CanvasLink> EmulationSource::markedLinks(TextRange line) const {
  std::vector<CanvasLink> links;
  TextPosition at = line.begin;
  const auto addRun = [&](std::size_t bytes, const vt::LinkTarget* target) {
    const TextRange run{.begin = at, .end = at + bytes};
    at = run.end;
    if (target == nullptr || target->uri.empty()) return;
    const bool goesOn = !links.empty() && links.back().range.end == run.begin && links.back().target == target->uri;
    if (goesOn) {
      links.back().range.end = run.end;
    } else {
      links.push_back({.range = run, .target = target->uri});
    }
  };
  if (line.begin < m_history.end()) {
    const vt::HistoryLine part = m_history.part(line.begin, std::min(line.end, m_history.end()));
    for (const vt::HistoryLine::Run& run : part.runs) {
      addRun(run.length, &run.link);
    }
  }
  if (isOnScreen(line.end)) {
    const ScreenLines::LineRows rows = m_lines.rowsOfLine(m_lines.rowAt(std::max(line.begin, m_lines.start())));
    for (std::size_t row = rows.first; row <= rows.last; ++row) {
      at = m_lines.range(row).begin;
      for (const vt::SnapshotRow::Run& run : m_screen->rows[row]->runs) {
        addRun(run.bytes, run.link.get());
      }
    }
  }
  return links;
}

std::optional<CanvasLink> EmulationSource::linkAt(TextPosition position) const {
  const TextRange line = near(position);
  if (position >= line.end) return std::nullopt;
  const auto isThere = [position](TextRange range) { return position >= range.begin && position < range.end; };
  for (CanvasLink& marked : markedLinks(line)) {
    if (isThere(marked.range)) return std::move(marked);
  }
  const std::string text = rawText(line);
  for (const ByteRange found : findLinks(text)) {
    const TextRange range{.begin = line.begin + found.begin, .end = line.begin + found.end};
    if (!isThere(range)) continue;
    return CanvasLink{.range = range, .target = text.substr(found.begin, found.end - found.begin)};
  }
  return std::nullopt;
}

std::vector<EmulationSource::LinePart> EmulationSource::linesIn(TextRange range) const {
  std::vector<LinePart> parts;
  TextPosition at = range.begin;
  while (at <= range.end) {
    const TextRange line = lineAt(at);
    const TextPosition first = std::max(line.begin, range.begin);
    LinePart part{.range = near(line, {.begin = first, .end = std::max(first, std::min(line.end, range.end))}),
                  .text = {},
                  .markedLinks = {}};
    part.text = rawText(part.range);
    if (part.text.ends_with('\n')) {
      part.text.pop_back();
      part.range.end = part.range.end - 1;
    }
    part.markedLinks = markedLinks(part.range);
    parts.push_back(std::move(part));
    if (line.end <= at) break;
    at = line.end;
  }
  return parts;
}

vt::ScrollbackView EmulationSource::shownText() const {
  return withRows(m_screen->isAlternate ? nothingBeforeAlternate() : m_screen->history, m_screen->rows);
}

vt::ScrollbackView EmulationSource::wholeText() const {
  return withRows(m_screen->history, m_screen->primaryRows ? *m_screen->primaryRows : m_screen->rows);
}

// A screen's lines as lines of the history that they follow, without the blank rows below them.
vt::ScrollbackView EmulationSource::withRows(const vt::ScrollbackView& history,
                                             const vt::ScreenSnapshot::Rows& rows) const {
  vt::TailBuilder builder(history, m_screen->graphemeClusters);
  std::size_t last = rows.size();
  while (last > 1 && rows[last - 1]->text.empty()) {
    --last;
  }
  for (std::size_t row = 0; row < last; ++row) {
    const vt::SnapshotRow& shown = *rows[row];
    vt::HistoryLine line{.text = shown.text, .runs = {}, .marks = {}, .isEnded = !shown.wraps && row + 1 < last};
    for (const vt::SnapshotRow::Run& run : shown.runs) {
      line.runs.push_back({.length = run.bytes, .style = run.style, .link = run.link ? *run.link : vt::LinkTarget()});
    }
    for (const vt::RowMark& mark : shown.marks) {
      line.marks.push_back({.offset = static_cast<std::uint32_t>(vt::byteAt(shown, mark.column)),
                            .kind = mark.kind,
                            .exitStatus = mark.exitStatus});
    }
    builder.add(line);
  }
  return builder.finish();
}

}  // namespace zolt
