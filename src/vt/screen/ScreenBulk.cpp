#include <deque>

#include "text/CharacterWidth.h"
#include "text/TextScan.h"
#include "text/Utf8.h"
#include "vt/cells/Sgr.h"
#include "vt/parser/SequenceScan.h"
#include "vt/screen/Screen.h"

namespace zolt::vt {

namespace {

// Text or an SGR sequence at the start of the rest of a line.
struct Piece {
  std::size_t size = 0;  // bytes; 0 for anything else
  bool isText = false;
  char32_t lastScalar = 0;  // of text
};

// Characters that may join others are left to the regular path, which looks at their neighbours.
Piece textPiece(std::string_view bytes, bool inClusters) {
  const std::size_t ascii = printablePrefix(bytes);
  if (ascii != 0) return {.size = ascii, .isText = true, .lastScalar = static_cast<unsigned char>(bytes[ascii - 1])};
  constexpr char32_t kFirstPrinted = 0xA0;
  Piece piece{.isText = true};
  while (piece.size < bytes.size()) {
    const DecodedScalar decoded = decodeUtf8(bytes.data() + piece.size, bytes.data() + bytes.size());
    if (decoded.scalar < kFirstPrinted) break;
    const CharacterProperties properties = characterProperties(decoded.scalar);
    if (properties.width == 0 || (inClusters && !properties.isPlain)) return {};
    piece.size += decoded.length;
    piece.lastScalar = decoded.scalar;
  }
  return piece;
}

// A background colour is not plain: it would fill the rows that scroll in.
Piece renditionPiece(std::string_view bytes, ControlSequence& sequence, Style& style) {
  const std::size_t size = scanControlSequence(bytes, sequence);
  const bool isSgr = sequence.final == 'm' && sequence.prefix == 0 && sequence.intermediateCount == 0;
  if (size == 0 || !isSgr) return {};
  applyRenditions(sequence, 0, style);
  return {.size = style.background == CellColor() ? size : 0};
}

// Calls `take` with each piece of the first line of `bytes`. Returns the line's length, including its CR LF, or 0 if
// the line is not plain: if there is anything in it but text and SGR.
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

// The limit of a line, and of the first screenful of lines together. A history block has room for as many styles as
// that many bytes can set.
constexpr std::size_t kMaxBytes = std::size_t{128} << 10;

// Whether `bytes` starts with this many plain lines.
bool startsWithPlainLines(std::string_view bytes, std::size_t count, bool inClusters, Style style) {
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

bool Screen::canPrintBulk() const {
  const RowInfo& state = m_grid->state(m_cursor.row);
  const bool isPlain = characterSets.areAscii() && modes.autoWrap && !modes.insert && !m_pen.isProtected &&
                       m_pen.style.background == CellColor();
  const bool scrollsAsWhole = m_margins == area() && !showsAlternate();
  const bool isAtNewLine = m_cursor == Cursor{.row = rows() - 1} && state.extent == 0 && !state.hasMarks;
  return isPlain && scrollsAsWhole && isAtNewLine;
}

Screen::BulkResult Screen::printBulk(std::string_view bytes) {
  const auto height = static_cast<std::size_t>(rows());
  if (!startsWithPlainLines(bytes, height + 1, modes.graphemeClusters, m_pen.style)) return {};

  // The rows on the screen scroll off first.
  const Cell blank;
  for (int row = 0; row < rows() - 1; ++row) {
    saveToHistory(row);
    m_grid->clearRow(row, blank);
  }
  setCursor({});

  // The starts of the last screenful of lines, which are taken out of the scrollback again in the end, to be printed.
  struct LineStart {
    std::size_t at;
    Scrollback::Checkpoint checkpoint;
    Style style;
    char32_t lastPrinted;
  };
  std::deque<LineStart> starts;
  m_scrollback.setClusters(modes.graphemeClusters);
  m_scrollback.startBlockIfFull(0);
  std::size_t at = 0;
  std::size_t lines = 0;
  ControlSequence sequence;  // reused, because it is large
  bool isPlain = true;
  while (isPlain && at < bytes.size() && (lines <= height || !m_scrollback.isFull())) {
    starts.push_back(
        {.at = at, .checkpoint = m_scrollback.checkpoint(), .style = m_pen.style, .lastPrinted = m_lastPrinted});
    if (starts.size() > height + 1) starts.pop_front();
    const auto take = [&](std::string_view text, const Piece& piece) {
      // An SGR sequence has changed the pen already.
      m_attributesKnown = m_attributesKnown && piece.isText;
      if (!piece.isText) return;
      m_scrollback.appendText(text, Cell(attributes()), m_tables);
      m_lastPrinted = piece.lastScalar;
    };
    const std::size_t size = forEachPiece(bytes.substr(at, kMaxBytes), modes.graphemeClusters, sequence, style(), take);
    isPlain = size != 0;
    if (!isPlain) break;
    m_scrollback.endLine(m_tables);
    at += size;
    ++lines;
  }
  // The line that was not plain has a start, too.
  const LineStart& first = starts[starts.size() - height - (isPlain ? 0 : 1)];
  m_scrollback.rollBack(first.checkpoint);
  style() = first.style;
  m_lastPrinted = first.lastPrinted;
  return {.printed = first.at, .scanned = at};
}

}  // namespace zolt::vt
