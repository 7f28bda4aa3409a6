#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace zolt {

/// The file for history that does not fit the memory budget. One thread writes, any may read.
class SpillFile {
 public:
  virtual ~SpillFile() = default;

  /// Writes all of `bytes` at `offset`. False when that failed; the content there is undefined then.
  virtual bool write(std::uint64_t offset, std::string_view bytes) = 0;
  /// Reads exactly `size` bytes; false when that failed.
  virtual bool read(std::uint64_t offset, std::size_t size, std::string& bytes) const = 0;
};

/// Creates a file of mode 0600 in `folder`, which is created if missing. The file is unlinked at once: it disappears
/// with the process, however that ends, and no other process can open it by name. Null when it cannot be created.
std::unique_ptr<SpillFile> openSpillFile(const std::string& folder);

}  // namespace zolt
