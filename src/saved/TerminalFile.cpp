#include "saved/TerminalFile.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

#include "saved/BlockSummaries.h"
#include "saved/SealedFile.h"

namespace zolt {

namespace {

// Records: the state, the summaries of the blocks, and the blocks. One that was lost before is empty.
constexpr std::size_t kState = 0;
constexpr std::size_t kSummaries = 1;
constexpr std::size_t kFirstBlock = 2;

}  // namespace

int writeTerminalFile(const std::string& path, const BlockCipher::Key& key, const vt::TerminalRecord& terminal) {
  std::vector<BlockSummary> summaries;
  std::vector<StoredBlock> blocks;
  terminal.history.forEachStored([&](StoredBlock block) {
    summaries.push_back(block.summary);
    blocks.push_back(std::move(block));
  });
  SealedFileWriter file(path, key);
  file.add(terminal.state);
  file.add(encodedSummaries(summaries));
  for (const StoredBlock& block : blocks) {
    file.add(block.compressed ? *block.compressed : std::string());
  }
  return file.finish();
}

Result<vt::StoredTerminal> readTerminalFile(const std::string& path, const BlockCipher::Key& key) {
  const auto file = SealedFileReader::open(path, key);
  if (!file) return Failure{file.reason()};
  const SealedFileReader& records = file.value();
  auto state = records.count() >= kFirstBlock ? records.record(kState) : std::nullopt;
  if (!state) return Failure{"the file is damaged"};
  vt::StoredTerminal terminal{.state = std::move(*state), .history = {}};
  const auto bytes = records.record(kSummaries);
  const auto summaries = bytes ? decodedSummaries(*bytes) : std::nullopt;
  if (!summaries || kFirstBlock + summaries->size() != records.count()) return terminal;
  for (std::size_t i = 0; i < summaries->size(); ++i) {
    auto block = records.record(kFirstBlock + i);
    StoredBlock stored{.summary = (*summaries)[i], .compressed = nullptr};
    if (block && !block->empty()) stored.compressed = std::make_shared<const std::string>(std::move(*block));
    terminal.history.push_back(std::move(stored));
  }
  return terminal;
}

}  // namespace zolt
