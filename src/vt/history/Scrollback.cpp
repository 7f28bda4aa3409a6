#include "vt/history/Scrollback.h"

#include <algorithm>
#include <utility>

#include "vt/cells/CellRuns.h"

namespace zolt::vt {

namespace {

// Blocks store style and link IDs in 16 bits.
constexpr std::size_t kMaxIds = UINT16_MAX;
// Reserved in a block for the row that fills it.
constexpr std::size_t kSpareBytes = 1024;

// A new run starts where these change.
std::uint64_t runAttributes(Cell cell) {
  return Cell::makeAttributes(cell.style(), cell.link(), false);
}

}  // namespace

Scrollback::Scrollback(HistorySettings settings) : m_blocks(ScrollbackBlock::kind, std::move(settings)) {
  openBlock({}, false);
}

void Scrollback::clear() {
  if (endsMidLine()) ++m_lineEnds;
  if (m_previous) seal(*m_previous);
  seal(m_open);
  m_previous.reset();
  m_blocks.dropBefore(m_blocks.endBlock());
  openBlock({.position = end(), .line = m_lineEnds}, m_open.content->clusters);
}

void Scrollback::startAt(const BlockStart& start) {
  m_lineEnds = start.line;
  openBlock(start, m_open.content->clusters);
}

bool Scrollback::adopt(std::vector<StoredBlock> blocks) {
  TextPosition end = blocks.empty() ? m_open.start.position : blocks.front().summary.start;
  for (const StoredBlock& block : blocks) {
    if (block.summary.start != end) return false;
    end = block.summary.end();
  }
  if (end != m_open.start.position || m_blocks.endBlock() > 0) return false;
  for (StoredBlock& block : blocks) {
    m_blocks.addStored(std::move(block));
  }
  trim();
  return true;
}

void Scrollback::OpenBlock::copyContent() {
  auto copy = std::make_shared<HistoryBlock>();
  copy->text.reserve(kScrollbackBlockBytes + kSpareBytes);
  copy->runs.reserve(content->runs.capacity());
  *copy = *content;
  content = std::move(copy);
  isShared = false;
}

void Scrollback::openBlock(const BlockStart& start, bool clusters) {
  m_open = {.content = std::make_shared<HistoryBlock>(), .start = start};
  m_open.content->clusters = clusters;
  m_open.content->text.reserve(kScrollbackBlockBytes + kSpareBytes);
  // Blocks of the same program's output tend to have as many runs.
  if (m_previous) m_open.content->runs.reserve(m_previous->content->runs.size() * 9 / 8);
  m_linkBytes = 0;
  forgetIds();
}

void Scrollback::seal(const OpenBlock& block) {
  m_blocks.add(std::make_shared<const ScrollbackBlock>(block.content, block.start));
}

void Scrollback::startBlock() {
  const bool clusters = m_open.content->clusters;
  if (m_open.content->text.empty()) return openBlock(m_open.start, clusters);
  // A run may have been started for text that was rolled back.
  if (m_open.content->runs.back().begin >= m_open.content->text.size()) {
    HistoryBlock& block = m_open.writable();
    std::erase_if(block.runs, [&](const HistoryRun& run) { return run.begin >= block.text.size(); });
  }
  BlockStart next = this->next();
  if (next.continuesALine) next.column = ScrollbackBlock(m_open.content, m_open.start).following().column;
  if (m_previous) seal(*m_previous);
  m_previous = std::move(m_open);
  openBlock(next, clusters);
  trim();
}

void Scrollback::changeClusters(bool clusters) {
  startBlock();
  m_open.writable().clusters = clusters;
}

BlockStart Scrollback::startOf(std::size_t block) const {
  if (block < m_blocks.endBlock()) return ScrollbackBlock::startOf(m_blocks.summary(block));
  return block == m_blocks.endBlock() && m_previous ? m_previous->start : m_open.start;
}

BlockStart Scrollback::firstStart() const {
  return startOf(m_blocks.firstBlock());
}

void Scrollback::setLimit(std::optional<std::uint64_t> lines) {
  m_limit = lines;
  trim();
}

void Scrollback::trim() {
  if (!m_limit) return;
  std::size_t first = m_blocks.endBlock() + (m_previous ? 1 : 0);
  std::uint64_t countedParts = 0;
  const auto linesFrom = [&](std::size_t block) {
    const BlockStart start = startOf(block);
    return endLine() - start.line - (start.continuesALine ? 1 : 0) + countedParts;
  };
  while (first > m_blocks.firstBlock() && linesFrom(first) < *m_limit) {
    --first;
    const BlockStart start = startOf(first);
    const BlockStart next = startOf(first + 1);
    if (start.line == next.line) countedParts += (next.position - start.position) / partBytes;
  }
  if (linesFrom(first) < *m_limit) return;
  if (first == m_blocks.endBlock() + 1) {
    seal(*m_previous);
    m_previous.reset();
  }
  m_blocks.dropBefore(first);
}

ScrollbackView Scrollback::view() const {
  std::vector<ScrollbackView::TailBlock> tail;
  if (m_previous) {
    m_previous->isShared = true;
    tail.push_back({.content = m_previous->content, .start = m_previous->start});
  }
  m_open.isShared = true;
  tail.push_back({.content = m_open.content, .start = m_open.start});
  return {m_blocks.sealed(), std::move(tail), begin(), end(), firstLine(), endLine()};
}

void Scrollback::startRun(Cell cell, std::size_t begin, const CellTables& tables) {
  HistoryBlock& block = m_open.writable();
  const auto idIn = [&](std::vector<BlockId>& ids, std::size_t id, auto add) {
    if (ids.size() <= id) ids.resize(id + 1);
    if (ids[id].epoch != m_epoch) ids[id] = {.epoch = m_epoch, .id = static_cast<std::uint32_t>(add())};
    return ids[id].id;
  };
  // An empty run is replaced. The run is filled in place: copying a struct whose fields were just written one by one
  // stalls on store forwarding.
  const bool isEmpty = !block.runs.empty() && block.runs.back().begin == begin;
  HistoryRun& run = isEmpty ? block.runs.back() : block.runs.emplace_back();
  run = {};
  run.begin = static_cast<std::uint32_t>(begin);
  run.style = static_cast<std::uint16_t>(idIn(m_styleIds, cell.style(), [&] {
    block.packedStyles.push_back(packedStyle(tables.styles[cell.style()]));
    return block.packedStyles.size() - 1;
  }));
  if (cell.link() != 0) {
    run.link = idIn(m_linkIds, cell.link(), [&] {
      block.links.push_back(packedLink(tables.links[cell.link()]));
      m_linkBytes += block.links.back().size();
      return block.links.size();
    });
  }
  m_runAttributes = runAttributes(cell);
}

void Scrollback::appendCells(std::span<const Cell> cells, const CellTables& tables) {
  std::string& text = m_open.writable().text;
  constexpr std::size_t kMaxBytes = 4;  // in a scalar
  if (m_scratch.size() < cells.size() * kMaxBytes) m_scratch.resize(cells.size() * kMaxBytes);
  char* out = m_scratch.data();
  const auto flush = [&] {
    text.append(m_scratch.data(), static_cast<std::size_t>(out - m_scratch.data()));
    out = m_scratch.data();
  };
  while (!cells.empty()) {
    if (m_runAttributes != runAttributes(cells.front())) {
      startRun(cells.front(), text.size() + static_cast<std::size_t>(out - m_scratch.data()), tables);
    }
    // ASCII is copied in vectors; from the first other character on, the run is copied cell by cell.
    const std::uint64_t attributes = cells.front().attributes();
    const std::size_t plain = gatherAscii(cells.data(), cells.size(), attributes, out);
    out += plain;
    std::size_t taken = plain;
    for (; taken < cells.size(); ++taken) {
      const Cell cell = cells[taken];
      if (cell.attributes() != attributes) break;
      const char32_t character = cell.character();
      if (cell.isCluster()) {
        flush();
        tables.appendText(cell, text);
      } else if (character >= 0x80) {
        out = writeUtf8(out, character);
      } else if (character != 0) {
        *out++ = static_cast<char>(character);
      } else if (cell.width() == Cell::Width::Narrow) {
        *out++ = ' ';
      }
    }
    cells = cells.subspan(taken);
  }
  flush();
}

void Scrollback::append(std::span<const Cell> cells, bool wraps, std::span<const RowMark> marks,
                        const CellTables& tables) {
  // Blank cells and fillers at the end of a row are not text.
  const auto isText = [&](Cell cell) { return cell.width() != Cell::Width::Filler && (wraps || !cell.isBlank()); };
  while (!cells.empty() && !isText(cells.back())) {
    cells = cells.first(cells.size() - 1);
  }
  startBlockIfFull(cells.size());
  HistoryBlock& block = m_open.writable();
  std::size_t done = 0;
  for (const RowMark& mark : marks) {
    const std::size_t column = std::clamp<std::size_t>(static_cast<std::size_t>(mark.column), done, cells.size());
    appendCells(cells.subspan(done, column - done), tables);
    done = column;
    block.marks.push_back(
        {.offset = static_cast<std::uint32_t>(block.text.size()), .kind = mark.kind, .exitStatus = mark.exitStatus});
  }
  appendCells(cells.subspan(done), tables);
  if (!wraps) endLine(tables);
}

void Scrollback::startBlockIfFull(std::size_t styles) {
  if (isFull() || m_open.content->packedStyles.size() + styles > kMaxIds) startBlock();
}

void Scrollback::appendText(std::string_view utf8, Cell likeCell, const CellTables& tables) {
  std::string& text = m_open.writable().text;
  if (m_runAttributes != runAttributes(likeCell)) startRun(likeCell, text.size(), tables);
  text += utf8;
}

void Scrollback::endLine(const CellTables& tables) {
  HistoryBlock& block = m_open.writable();
  // The line end belongs to the open run, and every block has to start with a run.
  if (block.runs.empty()) startRun(Cell(), block.text.size(), tables);
  block.text.push_back('\n');
  ++m_lineEnds;
}

Scrollback::Checkpoint Scrollback::checkpoint() const {
  const HistoryBlock& block = *m_open.content;
  return {
      .bytes = block.text.size(), .runs = block.runs.size(), .lineEnds = m_lineEnds, .runAttributes = m_runAttributes};
}

void Scrollback::rollBack(const Checkpoint& checkpoint) {
  HistoryBlock& block = m_open.writable();
  block.text.resize(checkpoint.bytes);
  block.runs.resize(checkpoint.runs);
  m_lineEnds = checkpoint.lineEnds;
  m_runAttributes = checkpoint.runAttributes;
}

std::optional<HistoryLine> Scrollback::takeLastLine(std::size_t maxBytes) {
  // The line, from its start to the end of the history, may span two blocks.
  struct Part {
    OpenBlock* block;
    std::size_t begin;
    std::size_t end;
  };
  std::vector<Part> parts;
  std::size_t bytes = 0;
  bool isWhole = false;
  bool isEnded = false;
  for (OpenBlock* block : {&m_open, m_previous ? &*m_previous : nullptr}) {
    if (block == nullptr || isWhole) break;
    const std::string& text = block->content->text;
    if (text.empty()) continue;
    std::size_t end = text.size();
    if (parts.empty()) {
      isEnded = text.back() == '\n';
      if (isEnded) --end;
    }
    const std::size_t lineEnd = end == 0 ? std::string::npos : text.rfind('\n', end - 1);
    const std::size_t begin = lineEnd == std::string::npos ? 0 : lineEnd + 1;
    parts.push_back({block, begin, end});
    bytes += end - begin;
    if (bytes > maxBytes) return std::nullopt;
    isWhole = begin != 0 || !block->start.continuesALine;
  }
  if (!isWhole) return std::nullopt;

  HistoryLine line;
  line.isEnded = isEnded;
  for (auto at = parts.rbegin(); at != parts.rend(); ++at) {
    HistoryLine text = historyLine(*at->block->content, at->begin, at->end);
    for (HistoryMark& mark : text.marks) {
      mark.offset += static_cast<std::uint32_t>(line.text.size());
    }
    line.text += text.text;
    std::ranges::move(text.runs, std::back_inserter(line.runs));
    std::ranges::move(text.marks, std::back_inserter(line.marks));
  }
  for (const Part& part : parts) {
    HistoryBlock& content = part.block->writable();
    content.text.resize(part.begin);
    while (!content.runs.empty() && content.runs.back().begin >= part.begin) {
      content.runs.pop_back();
    }
    while (!content.marks.empty() && content.marks.back().offset >= part.begin) {
      content.marks.pop_back();
    }
  }
  if (isEnded) --m_lineEnds;
  if (m_open.content->text.empty() && m_previous) m_open = std::move(*std::exchange(m_previous, std::nullopt));
  // The reopened block has IDs of its own.
  forgetIds();
  return line;
}

void Scrollback::forEachLine(const std::function<void(HistoryLine&&)>& take) const {
  const auto takeLines = [&](const HistoryBlock& block) {
    for (std::size_t begin = 0; begin < block.text.size();) {
      const std::size_t end = std::min(block.text.find('\n', begin), block.text.size());
      HistoryLine line = historyLine(block, begin, end);
      line.isEnded = end != block.text.size();
      begin = end + 1;
      take(std::move(line));
    }
  };
  for (std::size_t i = m_blocks.firstBlock(); i < m_blocks.endBlock(); ++i) {
    if (const auto block = m_blocks.sealed().kept(i)) {
      takeLines(*static_cast<const ScrollbackBlock&>(*block).content());
    } else {
      take({.text = std::string(kHistoryLostNotice), .runs = {{.length = kHistoryLostNotice.size()}}});
    }
  }
  if (m_previous) takeLines(*m_previous->content);
  takeLines(*m_open.content);
}

std::size_t Scrollback::memoryBytes() const {
  return m_blocks.memoryBytes() + (m_previous ? vt::memoryBytes(*m_previous->content) : 0) +
         vt::memoryBytes(*m_open.content);
}

}  // namespace zolt::vt
