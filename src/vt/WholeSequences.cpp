#include "vt/WholeSequences.h"

#include <algorithm>
#include <cstdint>

namespace zolt::vt {

namespace {

// Numbers up to here can have one more digit.
constexpr std::int32_t kMaxShortValue = 99'999'999;

}  // namespace

std::size_t takeControlSequence(std::string_view bytes, ControlSequence& sequence) {
  if (bytes.size() < 3 || bytes[1] != '[') return 0;
  std::size_t at = 2;
  sequence.prefix = 0;
  sequence.intermediateCount = 0;
  if (bytes[at] >= '<' && bytes[at] <= '?') sequence.prefix = bytes[at++];
  std::size_t count = 0;
  std::int32_t value = Parameter::omitted;
  bool isSub = false;
  for (; at < bytes.size(); ++at) {
    const char c = bytes[at];
    if (c >= '0' && c <= '9') {
      // More digits than a number can have go the long way.
      if (value > kMaxShortValue) return 0;
      value = std::max(value, 0) * 10 + (c - '0');
      continue;
    }
    const bool isSeparator = c == ';' || c == ':';
    const bool isAnything = isSeparator || count > 0 || value != Parameter::omitted;
    if (isAnything) {
      if (count == ControlSequence::maxParameters) return 0;
      sequence.parameters[count++] = {.value = value, .isSub = isSub};
    }
    if (!isSeparator) break;
    value = Parameter::omitted;
    isSub = c == ':';
  }
  sequence.parameterCount = static_cast<std::uint8_t>(count);
  while (at < bytes.size() && bytes[at] >= ' ' && bytes[at] <= '/') {
    if (sequence.intermediateCount == ControlSequence::maxIntermediates) return 0;
    sequence.intermediates[sequence.intermediateCount++] = bytes[at++];
  }
  if (at == bytes.size() || bytes[at] < '@' || bytes[at] > '~') return 0;
  sequence.final = bytes[at];
  return at + 1;
}

char32_t wellFormedScalar(const char* text, const char* end, std::size_t& size) {
  const auto byte = [&](int i) { return static_cast<std::uint32_t>(static_cast<std::uint8_t>(text[i])); };
  const auto isTail = [&](int i) { return (byte(i) & 0xC0) == 0x80; };
  const std::uint32_t lead = byte(0);
  const std::ptrdiff_t room = end - text;
  if (lead >= 0xE0 && lead < 0xF0) {
    if (room < 3 || !isTail(1) || !isTail(2)) return 0;
    size = 3;
    const std::uint32_t scalar = (lead & 0xF) << 12 | (byte(1) & 0x3F) << 6 | (byte(2) & 0x3F);
    return scalar < 0x800 || (scalar & 0xF800) == 0xD800 ? 0 : scalar;
  }
  if (lead >= 0xC2 && lead < 0xE0) {
    if (room < 2 || !isTail(1)) return 0;
    size = 2;
    return (lead & 0x1F) << 6 | (byte(1) & 0x3F);
  }
  if (lead < 0xF0 || lead > 0xF4 || room < 4 || !isTail(1) || !isTail(2) || !isTail(3)) return 0;
  size = 4;
  const std::uint32_t scalar = (lead & 7) << 18 | (byte(1) & 0x3F) << 12 | (byte(2) & 0x3F) << 6 | (byte(3) & 0x3F);
  return scalar < 0x10000 || scalar > 0x10FFFF ? 0 : scalar;
}

}  // namespace zolt::vt
