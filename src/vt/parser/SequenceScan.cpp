#include "vt/parser/SequenceScan.h"

#include <algorithm>
#include <cstdint>

namespace zolt::vt {

namespace {

// A larger value might overflow with one more digit.
constexpr std::int32_t kMaxShortValue = 99'999'999;

}  // namespace

std::size_t scanControlSequence(std::string_view bytes, ControlSequence& sequence) {
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
      if (value > kMaxShortValue) return 0;
      value = std::max(value, 0) * 10 + (c - '0');
      continue;
    }
    const bool isSeparator = c == ';' || c == ':';
    if (isSeparator || count > 0 || value != Parameter::omitted) {
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

}  // namespace zolt::vt
