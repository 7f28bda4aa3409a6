#include "history/BlockStore.h"

#include <algorithm>
#include <condition_variable>
#include <deque>
#include <mutex>
#include <set>
#include <utility>
#include <variant>

#include "base/Fatal.h"
#include "history/BlockCodec.h"
#include "history/FreeExtents.h"
#include "history/HistoryWorker.h"

namespace zolt {

namespace {

// How many blocks, and how many bytes of them, may wait for the worker before the owner has to compress as well. Both
// limits are needed: a block in which each character has a style of its own is a hundred times as large as its text.
constexpr std::size_t kMaxWaiting = 64;
constexpr std::size_t kMaxWaitingBytes = std::size_t{64} << 20;
// The total size of the blocks that may stay uncompressed.
constexpr std::size_t kHotBytes = std::size_t{8} << 20;

}  // namespace

// The state shared by the owner's thread and the worker.
class BlockStore::State : public SteppedWork, public std::enable_shared_from_this<BlockStore::State> {
 public:
  explicit State(HistorySettings settings) : m_settings(std::move(settings)) {}

  // The first blocks that readers may ask for.
  using Pins = std::multiset<std::size_t>;

  void add(std::shared_ptr<const SealedBlock> block);
  void addCompressed(std::shared_ptr<const std::string> block);
  void dropBefore(std::size_t index);
  Pins::const_iterator pin();
  void unpin(Pins::const_iterator pin);
  std::optional<Content> read(std::size_t index) const;
  std::shared_ptr<const std::string> compressed(std::size_t index) const;
  Usage usage() const;
  void waitUntilIdle();
  void close();
  bool step() override;

 private:
  using Plain = std::shared_ptr<const SealedBlock>;
  using Packed = std::shared_ptr<const std::string>;
  struct Spilled {
    std::uint64_t offset = 0;
    std::uint32_t size = 0;
  };
  struct Dropped {};
  using Place = std::variant<Plain, Packed, Spilled, Dropped>;
  // Where a block was, and the file at that time.
  struct Found {
    Place place;
    std::shared_ptr<const SpillFile> file;
  };
  using Lock = std::unique_lock<std::mutex>;

  std::size_t end() const { return m_begin + m_places.size(); }
  Place& placeOf(std::size_t index) { return m_places[index - m_begin]; }
  const Place& placeOf(std::size_t index) const { return m_places[index - m_begin]; }

  bool mayPack() const {
    return m_nextToPack + m_settings.hotBlocks < end() || (m_plainBytes > kHotBytes && m_nextToPack < end());
  }
  bool mustPack() const {
    return m_nextToPack + m_settings.hotBlocks + kMaxWaiting < end() ||
           (m_plainBytes > kMaxWaitingBytes && m_nextToPack < end());
  }
  bool maySpill() const {
    return !m_settings.folder.empty() && m_memoryBytes > m_settings.memoryBudget && m_nextToSpill < end() &&
           std::holds_alternative<Packed>(placeOf(m_nextToSpill));
  }
  Found find(std::size_t index) const;
  Packed packedIn(std::size_t index, const Found& found) const;
  void skipDropped();
  void releaseTrimmed();
  void schedule();
  void pack(Lock& lock);
  void spill(Lock& lock);
  std::optional<std::uint64_t> writeOrReplace(std::string_view bytes, Lock& lock);
  bool writeAt(std::uint64_t offset, std::string_view bytes, Lock& lock);
  bool dropOldestInFile();

  const HistorySettings m_settings;
  const BlockCipher m_cipher;

  mutable std::mutex m_mutex;
  std::condition_variable m_idle;
  std::deque<Place> m_places;     // of the blocks from m_begin on
  std::size_t m_begin = 0;        // blocks before this are gone
  std::size_t m_trimmedUpTo = 0;  // as are those before this, as soon as no reader needs them
  Pins m_pins;
  std::size_t m_nextToPack = 0;   // blocks before this are compressed or being compressed
  std::size_t m_nextToSpill = 0;  // blocks before this are in the file or were dropped
  std::size_t m_oldestInFile = 0;
  std::size_t m_memoryBytes = 0;
  std::size_t m_plainBytes = 0;  // those of blocks whose compression has not begun
  std::shared_ptr<SpillFile> m_file;
  std::uint64_t m_fileEnd = 0;
  FreeExtents m_free;  // the parts of the file whose blocks were dropped
  bool m_scheduled = false;
  bool m_closed = false;
};

void BlockStore::State::add(std::shared_ptr<const SealedBlock> block) {
  Lock lock(m_mutex);
  m_memoryBytes += block->memoryBytes();
  m_plainBytes += block->memoryBytes();
  m_places.emplace_back(std::move(block));
  while (mustPack()) {
    pack(lock);
  }
  schedule();
}

void BlockStore::State::addCompressed(std::shared_ptr<const std::string> block) {
  const Lock lock(m_mutex);
  if (m_nextToPack != end()) fatalError("history: a compressed block was added after others");
  if (block) m_memoryBytes += block->size();
  m_places.push_back(block ? Place(std::move(block)) : Place(Dropped{}));
  m_nextToPack = end();
  skipDropped();
  schedule();
}

void BlockStore::State::skipDropped() {
  while (m_nextToSpill < end() && std::holds_alternative<Dropped>(placeOf(m_nextToSpill))) {
    ++m_nextToSpill;
  }
}

void BlockStore::State::dropBefore(std::size_t index) {
  const Lock lock(m_mutex);
  m_trimmedUpTo = std::max(m_trimmedUpTo, index);
  releaseTrimmed();
}

BlockStore::State::Pins::const_iterator BlockStore::State::pin() {
  const Lock lock(m_mutex);
  return m_pins.insert(m_trimmedUpTo);
}

void BlockStore::State::unpin(Pins::const_iterator pin) {
  const Lock lock(m_mutex);
  m_pins.erase(pin);
  releaseTrimmed();
}

// Either thread may be at work on a block that goes here; it looks again when it has the lock.
void BlockStore::State::releaseTrimmed() {
  const std::size_t unused = m_pins.empty() ? m_trimmedUpTo : std::min(m_trimmedUpTo, *m_pins.begin());
  for (; m_begin < unused; ++m_begin) {
    const Place& place = m_places.front();
    if (const Plain* plain = std::get_if<Plain>(&place)) {
      m_memoryBytes -= (*plain)->memoryBytes();
      if (m_begin >= m_nextToPack) m_plainBytes -= (*plain)->memoryBytes();
    } else if (const Packed* packed = std::get_if<Packed>(&place)) {
      m_memoryBytes -= (*packed)->size();
    } else if (const Spilled* spilled = std::get_if<Spilled>(&place)) {
      m_free.add(spilled->offset, spilled->size);
    }
    m_places.pop_front();
  }
  m_nextToPack = std::max(m_nextToPack, m_begin);
  m_nextToSpill = std::max(m_nextToSpill, m_begin);
  m_oldestInFile = std::max(m_oldestInFile, m_begin);
}

void BlockStore::State::schedule() {
  if (m_scheduled || !(mayPack() || maySpill())) return;
  m_scheduled = true;
  HistoryWorker::shared().submit(shared_from_this());
}

bool BlockStore::State::step() {
  Lock lock(m_mutex);
  if (!m_closed) {
    if (maySpill()) {
      spill(lock);
    } else if (mayPack()) {
      pack(lock);
    }
  }
  m_scheduled = !m_closed && (mayPack() || maySpill());
  if (!m_scheduled) m_idle.notify_all();
  return m_scheduled;
}

// Compresses the oldest uncompressed block. Both threads do this, each with a block of its own.
void BlockStore::State::pack(Lock& lock) {
  const std::size_t index = m_nextToPack++;
  const Plain plain = std::get<Plain>(placeOf(index));
  m_plainBytes -= plain->memoryBytes();
  lock.unlock();
  auto packed = std::make_shared<const std::string>(compressBlock(plain->encoded()));
  lock.lock();
  if (index >= m_begin) {
    m_memoryBytes -= plain->memoryBytes();
    m_memoryBytes += packed->size();
    placeOf(index) = std::move(packed);
  }
  schedule();
}

// Moves the oldest block in memory to the file. Only the worker calls this.
void BlockStore::State::spill(Lock& lock) {
  const std::size_t index = m_nextToSpill;
  const Packed packed = std::get<Packed>(placeOf(index));
  lock.unlock();
  const std::string sealed = m_cipher.seal(index, *packed);
  lock.lock();
  const std::optional<std::uint64_t> offset = writeOrReplace(sealed, lock);
  const Spilled written{.offset = offset.value_or(0), .size = static_cast<std::uint32_t>(sealed.size())};
  if (index < m_begin) {
    if (offset) m_free.add(written.offset, written.size);
    return;
  }
  placeOf(index) = offset ? Place(written) : Place(Dropped{});
  m_memoryBytes -= packed->size();
  ++m_nextToSpill;
  skipDropped();
}

// Writes where there is room or at the end of the file or, once it can no longer grow, over the oldest blocks. Returns
// the offset.
std::optional<std::uint64_t> BlockStore::State::writeOrReplace(std::string_view bytes, Lock& lock) {
  if (!m_file) {
    lock.unlock();
    std::shared_ptr<SpillFile> opened = m_settings.openFile(m_settings.folder);
    lock.lock();
    m_file = std::move(opened);
  }
  if (!m_file) return std::nullopt;
  std::optional<std::uint64_t> offset = m_free.take(bytes.size());
  if (!offset && writeAt(m_fileEnd, bytes, lock)) return std::exchange(m_fileEnd, m_fileEnd + bytes.size());
  while (!offset && dropOldestInFile()) {
    offset = m_free.take(bytes.size());
  }
  if (!offset || writeAt(*offset, bytes, lock)) return offset;
  m_free.add(*offset, bytes.size());
  return std::nullopt;
}

bool BlockStore::State::writeAt(std::uint64_t offset, std::string_view bytes, Lock& lock) {
  const std::shared_ptr<SpillFile> file = m_file;
  lock.unlock();
  const bool written = file->write(offset, bytes);
  lock.lock();
  return written;
}

bool BlockStore::State::dropOldestInFile() {
  while (m_oldestInFile < m_nextToSpill && !std::holds_alternative<Spilled>(placeOf(m_oldestInFile))) {
    ++m_oldestInFile;
  }
  if (m_oldestInFile >= m_nextToSpill) return false;
  const Spilled oldest = std::get<Spilled>(placeOf(m_oldestInFile));
  placeOf(m_oldestInFile++) = Dropped{};
  m_free.add(oldest.offset, oldest.size);
  return true;
}

BlockStore::State::Found BlockStore::State::find(std::size_t index) const {
  const Lock lock(m_mutex);
  if (index < m_begin) return {.place = Dropped{}, .file = nullptr};
  return {.place = placeOf(index), .file = m_file};
}

// The bytes of a block that is compressed already; null if it is not, or can no longer be read.
BlockStore::State::Packed BlockStore::State::packedIn(std::size_t index, const Found& found) const {
  if (const Packed* packed = std::get_if<Packed>(&found.place)) return *packed;
  const Spilled* spilled = std::get_if<Spilled>(&found.place);
  std::string sealed;
  if (spilled == nullptr || !found.file->read(spilled->offset, spilled->size, sealed)) return nullptr;
  // If it was just dropped and overwritten, it does not open: what is there now was sealed under another number.
  auto opened = m_cipher.open(index, sealed);
  return opened ? std::make_shared<const std::string>(std::move(*opened)) : nullptr;
}

std::optional<BlockStore::Content> BlockStore::State::read(std::size_t index) const {
  const Found found = find(index);
  if (const Plain* plain = std::get_if<Plain>(&found.place)) return Content{.block = *plain, .bytes = {}};
  const Packed packed = packedIn(index, found);
  auto bytes = packed ? decompressBlock(*packed) : std::nullopt;
  if (!bytes) return std::nullopt;
  return Content{.block = nullptr, .bytes = std::move(*bytes)};
}

std::shared_ptr<const std::string> BlockStore::State::compressed(std::size_t index) const {
  const Found found = find(index);
  const Plain* plain = std::get_if<Plain>(&found.place);
  return plain == nullptr ? packedIn(index, found)
                          : std::make_shared<const std::string>(compressBlock((*plain)->encoded()));
}

BlockStore::Usage BlockStore::State::usage() const {
  const Lock lock(m_mutex);
  Usage usage;
  usage.memoryBytes = m_memoryBytes;
  for (const Place& place : m_places) {
    usage.plainBlocks += std::holds_alternative<Plain>(place) ? 1 : 0;
    usage.compressedBlocks += std::holds_alternative<Packed>(place) ? 1 : 0;
    usage.droppedBlocks += std::holds_alternative<Dropped>(place) ? 1 : 0;
    if (const Spilled* spilled = std::get_if<Spilled>(&place)) {
      ++usage.spilledBlocks;
      usage.fileBytes += spilled->size;
    }
  }
  return usage;
}

void BlockStore::State::waitUntilIdle() {
  Lock lock(m_mutex);
  m_idle.wait(lock, [this] { return !m_scheduled; });
}

void BlockStore::State::close() {
  const Lock lock(m_mutex);
  m_closed = true;
}

// Keeps the blocks that a reader may ask for.
class BlockStore::Pin {
 public:
  explicit Pin(std::shared_ptr<State> state) : m_state(std::move(state)), m_pin(m_state->pin()) {}
  Pin(const Pin&) = delete;
  Pin& operator=(const Pin&) = delete;
  ~Pin() { m_state->unpin(m_pin); }

  const State& state() const { return *m_state; }

 private:
  std::shared_ptr<State> m_state;
  State::Pins::const_iterator m_pin;
};

BlockStore::BlockStore(HistorySettings settings) : m_state(std::make_shared<State>(std::move(settings))) {}

BlockStore::~BlockStore() {
  if (m_state) m_state->close();
}

void BlockStore::add(std::shared_ptr<const SealedBlock> block) {
  m_state->add(std::move(block));
}

void BlockStore::addCompressed(std::shared_ptr<const std::string> block) {
  m_state->addCompressed(std::move(block));
}

void BlockStore::dropBefore(std::size_t index) {
  m_state->dropBefore(index);
}

BlockStore::Reader BlockStore::reader() const {
  return Reader(std::make_shared<const Pin>(m_state));
}

std::optional<BlockStore::Content> BlockStore::read(std::size_t index) const {
  return m_state->read(index);
}

std::optional<BlockStore::Content> BlockStore::Reader::read(std::size_t index) const {
  return m_pin->state().read(index);
}

std::shared_ptr<const std::string> BlockStore::Reader::compressed(std::size_t index) const {
  return m_pin->state().compressed(index);
}

BlockStore::Usage BlockStore::usage() const {
  return m_state->usage();
}

void BlockStore::waitUntilIdle() {
  m_state->waitUntilIdle();
}

}  // namespace zolt
