#include <deque>

#include "text/CharacterWidth.h"
#include "text/TextScan.h"
#include "vt/Screen.h"
#include "vt/SgrSequence.h"
#include "vt/WholeSequences.h"

namespace zolt::vt {

namespace {

// Text or a rendition that a line begins with.
struct Piece {
  std::size_t size = 0;  // bytes; 0 where it is something else
  bool isText = false;
  char32_t lastScalar = 0;  // of a text
};

// What may join another character is left for where its neighbours are.
Piece textPiece(std::string_view bytes, bool inClusters) {
  const std::size_t ascii = printablePrefix(bytes);
  if (ascii != 0) return {.size = ascii, .isText = true, .lastScalar = static_cast<unsigned char>(bytes[ascii - 1])};
  constexpr char32_t kFirstPrinted = 0xA0;
  Piece piece{.isText = true};
  while (piece.size < bytes.size()) {
    std::size_t size = 0;
    const char32_t scalar = wellFormedScalar(bytes.data() + piece.size, bytes.data() + bytes.size(), size);
    if (scalar < kFirstPrinted) break;
    const CharacterProperties properties = characterProperties(scalar);
    if (properties.width == 0 || (inClusters && !properties.isPlain)) return {};
    piece.size += size;
    piece.lastScalar = scalar;
  }
  return piece;
}

// A background is left on rows that scroll in: it is not usual.
Piece renditionPiece(std::string_view bytes, ControlSequence& sequence, Style& style) {
  const std::size_t size = takeControlSequence(bytes, sequence);
  const bool isSgr = sequence.final == 'm' && sequence.prefix == 0 && sequence.intermediateCount == 0;
  if (size == 0 || !isSgr) return {};
  applyRenditions(sequence, 0, style);
  return {.size = style.background == CellColor() ? size : 0};
}

// Tells `take` each piece of the line that `bytes` begin with. How many bytes it has with its end, CR LF; 0 where there
// is something unusual in it.
template <class Take>
std::size_t forEachPiece(std::string_view bytes, bool inClusters, ControlSequence& sequence, Style& style, Take take) {
  for (std::size_t at = 0; at < bytes.size();) {
    if (bytes[at] == '\r') return at + 1 < bytes.size() && bytes[at + 1] == '\n' ? at + 2 : 0;
    const std::string_view rest = bytes.substr(at);
    const Piece piece = rest.front() == '\033' ? renditionPiece(rest, sequence, style) : textPiece(rest, inClusters);
    if (piece.size == 0) return 0;
    take(rest.substr(0, piece.size), piece);
    at += piece.size;
  }
  return 0;
}

// The most that a line may have, and those together which have to be seen before any is printed: a block of the history
// has room for as many styles as that can hold.
constexpr std::size_t kMaxBytes = std::size_t{128} << 10;

// Whether so many usual lines follow.
bool beginsWithLines(std::string_view bytes, std::size_t count, bool inClusters, Style style) {
  std::size_t end = 0;
  for (std::size_t i = 0; i < count; ++i) {
    end = bytes.find('\n', end);
    if (end == std::string_view::npos || end > kMaxBytes) return false;
    ++end;
  }
  ControlSequence sequence;
  for (; count > 0; --count) {
    const std::size_t size = forEachPiece(bytes, inClusters, sequence, style, [](std::string_view, const Piece&) {});
    if (size == 0) return false;
    bytes.remove_prefix(size);
  }
  return true;
}

}  // namespace

bool Screen::isAtNewLine() const {
  const RowState& state = m_grid->state(m_cursor.row);
  const bool isUsual = characterSets.areAscii() && modes.autoWrap && !modes.insert && !m_pen.isProtected &&
                       m_pen.style.background == CellColor();
  const bool scrollsAsAWhole = m_top == 0 && m_bottom == rows() && hasFullWidth() && !showsAlternate();
  const bool isAtBegin = m_cursor == Cursor{.row = rows() - 1} && state.extent == 0 && !state.hasMarks;
  return isUsual && scrollsAsAWhole && isAtBegin;
}

Screen::Rush Screen::printLines(std::string_view bytes) {
  const auto height = static_cast<std::size_t>(rows());
  if (!beginsWithLines(bytes, height + 1, modes.graphemeClusters, m_pen.style)) return {};

  // What is on the screen scrolls off first.
  const Cell blank;
  for (int row = 0; row < rows() - 1; ++row) {
    keepRow(row);
    m_grid->clearRow(row, blank);
  }
  place(0, 0);

  // Where the latest lines begin, as many as the screen has rows: they are printed in the end as any.
  struct LineBegin {
    std::size_t at;
    Scrollback::Place place;
    Style style;
    char32_t lastPrinted;
  };
  std::deque<LineBegin> begins;
  m_scrollback.startBlockIfFull(0);
  std::size_t at = 0;
  std::size_t lines = 0;
  ControlSequence sequence;  // of the rendition at hand: made once, for it is large
  bool isUsual = true;
  while (isUsual && at < bytes.size() && (lines <= height || !m_scrollback.isFull())) {
    begins.push_back({.at = at, .place = m_scrollback.place(), .style = m_pen.style, .lastPrinted = m_lastPrinted});
    if (begins.size() > height + 1) begins.pop_front();
    const auto take = [&](std::string_view text, const Piece& piece) {
      // A rendition has changed the pen where it is.
      m_penIsKnown = m_penIsKnown && piece.isText;
      if (!piece.isText) return;
      m_scrollback.appendText(text, Cell(look()), m_tables);
      m_lastPrinted = piece.lastScalar;
    };
    const std::size_t size = forEachPiece(bytes.substr(at, kMaxBytes), modes.graphemeClusters, sequence, style(), take);
    isUsual = size != 0;
    if (!isUsual) break;
    m_scrollback.endLine(m_tables);
    at += size;
    ++lines;
  }
  // A line that turned out to be unusual has a beginning, too.
  const LineBegin& first = begins[begins.size() - height - (isUsual ? 0 : 1)];
  m_scrollback.takeBack(first.place);
  style() = first.style;
  m_lastPrinted = first.lastPrinted;
  return {.printed = first.at, .seen = at};
}

}  // namespace zolt::vt
