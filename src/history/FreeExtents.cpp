#include "history/FreeExtents.h"

#include <iterator>

namespace zolt {

void FreeExtents::add(std::uint64_t offset, std::uint64_t size) {
  auto after = m_sizes.upper_bound(offset);
  if (after != m_sizes.end() && after->first == offset + size) {
    size += after->second;
    after = m_sizes.erase(after);
  }
  if (after != m_sizes.begin()) {
    const auto before = std::prev(after);
    if (before->first + before->second == offset) {
      before->second += size;
      return;
    }
  }
  m_sizes.emplace(offset, size);
}

std::optional<std::uint64_t> FreeExtents::take(std::uint64_t size) {
  for (auto part = m_sizes.begin(); part != m_sizes.end(); ++part) {
    const auto [offset, available] = *part;
    if (available < size) continue;
    m_sizes.erase(part);
    if (available > size) m_sizes.emplace(offset + size, available - size);
    return offset;
  }
  return std::nullopt;
}

}  // namespace zolt
