#include "saved/BlockSummaries.h"

#include <cstddef>
#include <cstdint>

namespace zolt {

namespace {

// What a block can have in text; lines that are longer span blocks.
constexpr std::uint32_t kLargestBlock = std::uint32_t{16} << 20;

// Numbers in base 128, the lowest digit first, with the highest bit set in all bytes but the last.
struct Writer {
  static constexpr bool isReader = false;
  std::string bytes;

  template <class Number>
  void number(const Number& value) {
    auto rest = static_cast<std::uint64_t>(value);
    for (; rest >= 0x80; rest >>= 7) {
      bytes.push_back(static_cast<char>(rest | 0x80));
    }
    bytes.push_back(static_cast<char>(rest));
  }
};

struct Reader {
  static constexpr bool isReader = true;
  std::string_view rest;
  bool isDamaged = false;

  template <class Number>
  void number(Number& value) {
    std::uint64_t all = 0;
    for (unsigned shift = 0;; shift += 7) {
      if (rest.empty() || shift > 63) {
        isDamaged = true;
        return;
      }
      const auto byte = static_cast<unsigned char>(rest.front());
      rest.remove_prefix(1);
      all |= std::uint64_t{byte & 0x7FU} << shift;
      if (byte < 0x80) break;
    }
    value = static_cast<Number>(all);
    if (static_cast<std::uint64_t>(value) != all) isDamaged = true;
  }
};

// The structured binding names every member, so that a new one does not compile until it is stored.
template <class Archive, class Summary>
void fields(Archive& archive, Summary& summary) {
  auto& [start, firstLine, startColumn, continuedEndColumn, longestLine, size, lineStarts, endColumn, rule,
         continuesALine, endsALine] = summary;
  archive.number(start.value);
  archive.number(firstLine);
  archive.number(startColumn);
  archive.number(continuedEndColumn);
  archive.number(longestLine);
  archive.number(size);
  archive.number(lineStarts);
  archive.number(endColumn);
  archive.number(rule);
  archive.number(continuesALine);
  archive.number(endsALine);
}

bool isPossible(const BlockSummary& summary) {
  return summary.rule <= ColumnRule::Clusters && summary.size > 0 && summary.size <= kLargestBlock &&
         summary.lineStarts <= summary.size && summary.fragments() > 0;
}

}  // namespace

std::string encodedSummaries(const std::vector<BlockSummary>& summaries) {
  Writer writer;
  for (const BlockSummary& summary : summaries) {
    fields(writer, summary);
  }
  return std::move(writer.bytes);
}

std::optional<std::vector<BlockSummary>> decodedSummaries(std::string_view bytes) {
  Reader reader{.rest = bytes};
  std::vector<BlockSummary> summaries;
  while (!reader.rest.empty()) {
    BlockSummary summary;
    fields(reader, summary);
    const bool follows = summaries.empty() || summaries.back().end() == summary.start;
    if (reader.isDamaged || !follows || !isPossible(summary)) return std::nullopt;
    summaries.push_back(summary);
  }
  return summaries;
}

}  // namespace zolt
