#include "text/TextAttributes.h"

#include "text/Hashing.h"

namespace zolt {

std::size_t hashOf(const TextAttributes& attributes) {
  Hasher hasher;
  hasher.add(attributes.font.size);
  hasher.add(static_cast<std::uint64_t>(attributes.font.weight) |
             static_cast<std::uint64_t>(attributes.font.slant) << 8 |
             static_cast<std::uint64_t>(attributes.underline) << 16 |
             static_cast<std::uint64_t>(attributes.strikethrough) << 24 |
             static_cast<std::uint64_t>(attributes.background.has_value()) << 32);
  hasher.add(attributes.foreground);
  if (attributes.background) hasher.add(*attributes.background);
  return hasher.value();
}

}  // namespace zolt
