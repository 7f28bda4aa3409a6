#include "text/TextAttributes.h"

#include <bit>

namespace zolt {

namespace {

constexpr std::uint64_t kMultiplier = 0x9E3779B97F4A7C15ULL;  // 2^64 / golden ratio: Fibonacci hashing

void mix(std::uint64_t& hash, std::uint64_t value) {
  hash = std::rotl(hash ^ value, 23) * kMultiplier;
}

// Adding zero turns -0.0 into 0.0, which compare equal and must hash equal.
void mix(std::uint64_t& hash, double value) {
  mix(hash, std::bit_cast<std::uint64_t>(value + 0.0));
}

void mix(std::uint64_t& hash, const Color& color) {
  mix(hash, color.red);
  mix(hash, color.green);
  mix(hash, color.blue);
  mix(hash, color.alpha);
}

}  // namespace

std::size_t hashOf(const TextAttributes& attributes) {
  std::uint64_t hash = 1;
  mix(hash, attributes.font.size);
  mix(hash, static_cast<std::uint64_t>(attributes.font.weight) |
                static_cast<std::uint64_t>(attributes.font.slant) << 8 |
                static_cast<std::uint64_t>(attributes.underline) << 16 |
                static_cast<std::uint64_t>(attributes.strikethrough) << 24 |
                static_cast<std::uint64_t>(attributes.background.has_value()) << 32);
  mix(hash, attributes.foreground);
  if (attributes.background) mix(hash, *attributes.background);
  return hash ^ (hash >> 32);
}

}  // namespace zolt
