#include "vt/saved/SavedReader.h"

#include "text/TextScan.h"
#include "text/Utf8.h"
#include "vt/cells/CellRuns.h"
#include "vt/saved/SavedFields.h"

namespace zolt::vt {

namespace {

using Content = CellPiece::Content;
using Shape = CellPiece::Shape;

}  // namespace

void SavedReader::fail(std::string_view what) {
  if (m_error) return;
  m_error = std::string(what) + " before byte " + std::to_string(m_bytes.size() - m_rest.size());
  m_rest = {};
}

std::string_view SavedReader::take(std::size_t size) {
  if (size > m_rest.size()) {
    fail("an early end");
    return {};
  }
  const std::string_view taken = m_rest.substr(0, size);
  m_rest.remove_prefix(size);
  return taken;
}

// A number up to `max`, which is included; 0 after an error.
std::uint64_t SavedReader::upTo(std::uint64_t max) {
  std::uint64_t value = 0;
  for (int shift = 0; shift < 64; shift += 7) {
    std::uint8_t digit = 0;
    byte(digit);
    value |= static_cast<std::uint64_t>(digit & 0x7F) << shift;
    if ((digit & 0x80) != 0) continue;
    if (value <= max) return value;
    break;
  }
  fail("a number out of range");
  return 0;
}

void SavedReader::text(std::string& value, std::size_t maxBytes, bool (*isAllowed)(std::string_view)) {
  value = take(upTo(maxBytes));
  if (!isAllowed(value)) {
    fail("a text that no program can set");
    value.clear();
  }
}

char32_t SavedReader::printable() {
  const DecodedScalar decoded = decodeUtf8(m_rest.data(), m_rest.data() + m_rest.size());
  if (decoded.length == 0 || !SavedFields::isPrintable(decoded.scalar)) {
    fail("a character that cannot be printed");
    return U' ';
  }
  m_rest.remove_prefix(decoded.length);
  return decoded.scalar;
}

// The value whose number comes next. A number that is new is followed by the value, which `read` reads.
template <class Value, class Read>
typename SavedReader::Known<Value>::Entry& SavedReader::known(Known<Value>& values, Read read) {
  const std::uint64_t number = upTo(values.entries.size());
  if (number == values.entries.size()) read(values.entries.emplace_back().value);
  return values.entries[number];
}

// Room is made for any number that cells can refer to.
template <class Value, class Table>
std::uint32_t SavedReader::idOf(typename Known<Value>::Entry& entry, Table& table) {
  if (entry.id) return *entry.id;
  std::uint32_t id = table.intern(entry.value);
  if (id == Table::noRoom) {
    table.keepOnly([](std::size_t) { return true; });
    id = table.intern(entry.value);
  }
  if (id == Table::noRoom) {
    fail("more styles, links or clusters than a screen can have");
    return 0;
  }
  entry.id = id;
  return id;
}

void SavedReader::link(LinkTarget& target) {
  target = known(m_links, [&](LinkTarget& read) { SavedFields::fields(*this, read); }).value;
}

std::uint32_t SavedReader::cluster() {
  auto& entry = known(m_clusters, [&](std::u32string& scalars) {
    for (std::uint64_t count = upTo(CellTables::maxScalars); count > 0; --count) {
      scalars.push_back(printable());
    }
  });
  if (entry.value.empty()) fail("an empty cluster");
  return idOf<std::u32string>(entry, m_tables->clusters);
}

void SavedReader::pen(bool isProtected) {
  auto& style = known(m_styles, [&](Style& read) { SavedFields::fields(*this, read); });
  const auto styleId = static_cast<StyleId>(idOf<Style>(style, m_tables->styles));
  auto& target = known(m_links, [&](LinkTarget& read) { SavedFields::fields(*this, read); });
  const auto linkId = static_cast<LinkId>(idOf<LinkTarget>(target, m_tables->links));
  m_attributes = Cell::makeAttributes(styleId, linkId, isProtected);
}

void SavedReader::piece(const CellPiece& piece, std::span<Cell> cells) {
  const Cell::Width width = piece.width();
  if (piece.content == Content::Ascii) {
    const std::string_view ascii = take(cells.size());
    if (width != Cell::Width::Narrow || printablePrefix(ascii) != ascii.size()) return fail("text that is not plain");
    return spreadAscii(ascii, m_attributes, cells.data());
  }
  const bool hasContent = piece.shape != Shape::Tail && piece.shape != Shape::Filler;
  if (hasContent ? piece.content == Content::None && width != Cell::Width::Narrow : piece.content != Content::None) {
    return fail("a cell that cannot be");
  }
  const auto each = static_cast<std::size_t>(piece.cellsEach());
  for (std::size_t at = 0; at < cells.size() && !m_error; at += each) {
    if (piece.content == Content::Cluster) {
      cells[at] = Cell::cluster(cluster(), width, m_attributes);
    } else {
      cells[at] = Cell(piece.content == Content::Scalar ? printable() : 0, width, m_attributes);
    }
    if (each == 2) cells[at + 1] = Cell(0, Cell::Width::Tail, m_attributes);
  }
}

void SavedReader::cells(std::span<Cell> cells) {
  while (!cells.empty() && !m_error) {
    const CellPiece next = CellPiece::fromHead(upTo(INT64_MAX));
    if (next.content == Content::Pen) {
      pen(next.count == 1);
      continue;
    }
    const auto each = static_cast<std::size_t>(next.cellsEach());
    if (next.count == 0 || next.count > cells.size() / each) return fail("more cells than there is room for");
    const std::size_t size = next.count * each;
    piece(next, cells.first(size));
    cells = cells.subspan(size);
  }
}

}  // namespace zolt::vt
