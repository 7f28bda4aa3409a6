#include "vt/saved/SavedWriter.h"

#include "text/Utf8.h"
#include "vt/cells/CellRuns.h"
#include "vt/saved/SavedFields.h"

namespace zolt::vt {

namespace {

using Content = CellPiece::Content;
using Shape = CellPiece::Shape;

Content contentOf(Cell cell) {
  if (cell.isCluster()) return Content::Cluster;
  return cell.character() == 0 ? Content::None : Content::Scalar;
}

// `rest` starts with the cell and goes on to the end of its row.
Shape shapeOf(std::span<const Cell> rest) {
  const Cell cell = rest.front();
  switch (cell.width()) {
    case Cell::Width::Narrow:
      return Shape::Narrow;
    case Cell::Width::Tail:
      return Shape::Tail;
    case Cell::Width::Filler:
      return Shape::Filler;
    case Cell::Width::Wide:
      break;
  }
  const bool hasTail = rest.size() > 1 && rest[1] == Cell(0, Cell::Width::Tail, cell.attributes());
  return hasTail ? Shape::WideAndTail : Shape::Wide;
}

}  // namespace

void SavedWriter::text(std::string_view value, std::size_t, bool (*)(std::string_view)) {
  put(value.size());
  m_bytes += value;
}

void SavedWriter::link(const LinkTarget& target) {
  if (m_links.put(*this, target)) SavedFields::fields(*this, target);
}

void SavedWriter::cluster(ClusterId id) {
  const std::u32string& scalars = m_tables.clusters[id];
  if (!m_clusters.put(*this, id, scalars)) return;
  put(scalars.size());
  for (const char32_t scalar : scalars) {
    appendUtf8(m_bytes, scalar);
  }
}

void SavedWriter::pen(Cell cell) {
  m_attributes = cell.attributes();
  put(CellPiece{.content = Content::Pen, .count = cell.isProtected() ? 1U : 0U}.head());
  const Style& style = m_tables.styles[cell.style()];
  if (m_styles.put(*this, cell.style(), style)) SavedFields::fields(*this, style);
  const LinkTarget& target = m_tables.links[cell.link()];
  if (m_links.put(*this, cell.link(), target)) SavedFields::fields(*this, target);
}

void SavedWriter::piece(const CellPiece& piece, std::span<const Cell> cells) {
  put(piece.head());
  if (piece.content == Content::None) return;
  for (std::size_t at = 0; at < cells.size(); at += static_cast<std::size_t>(piece.cellsEach())) {
    if (piece.content == Content::Cluster) {
      cluster(cells[at].clusterId());
    } else {
      appendUtf8(m_bytes, cells[at].character());
    }
  }
}

void SavedWriter::cells(std::span<const Cell> cells) {
  if (m_scratch.size() < cells.size()) m_scratch.resize(cells.size());
  while (!cells.empty()) {
    if (cells.front().attributes() != m_attributes) pen(cells.front());
    const std::size_t ascii = gatherAscii(cells.data(), cells.size(), m_attributes, m_scratch.data());
    if (ascii > 0) {
      put(CellPiece{.content = Content::Ascii, .count = ascii}.head());
      m_bytes.append(m_scratch, 0, ascii);
      cells = cells.subspan(ascii);
      continue;
    }
    CellPiece found{.content = contentOf(cells.front()), .shape = shapeOf(cells)};
    const auto each = static_cast<std::size_t>(found.cellsEach());
    std::size_t end = 0;
    const auto goesOn = [&] {
      const Cell next = cells[end];
      const bool isAscii = next.width() == Cell::Width::Narrow && !next.isCluster() && next.character() - 1 < 0x7F;
      return next.attributes() == m_attributes && !isAscii && contentOf(next) == found.content &&
             shapeOf(cells.subspan(end)) == found.shape;
    };
    do {
      end += each;
      ++found.count;
    } while (end < cells.size() && goesOn());
    piece(found, cells.first(end));
    cells = cells.subspan(end);
  }
}

}  // namespace zolt::vt
