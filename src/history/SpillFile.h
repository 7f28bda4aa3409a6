#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace zolt {

/// Where a terminal's cold history goes when memory is short: bytes at offsets. One thread writes, any may read.
class SpillFile {
 public:
  virtual ~SpillFile() = default;

  /// Writes all of `bytes` at `offset`; false, and nothing may be relied on there, when the system takes not all of it.
  virtual bool write(std::uint64_t offset, std::string_view bytes) = 0;
  /// Reads exactly `size` bytes; false when they are not to be had.
  virtual bool read(std::uint64_t offset, std::size_t size, std::string& bytes) const = 0;
};

/// A new file of mode 0600 in `folder`, which is made where it is missing. The file has no name: it is gone with the
/// process however that ends, and no other process finds it. Null when the folder takes no file.
std::unique_ptr<SpillFile> openSpillFile(const std::string& folder);

}  // namespace zolt
