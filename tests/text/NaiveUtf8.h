#pragma once

#include <cstddef>
#include <string_view>

namespace zolt {

/// Whether `text` is valid UTF-8, by the definition: each sequence is decoded, and its scalar must be one and must need
/// that many bytes. The slow and obvious counterpart of `isValidUtf8`.
inline bool naiveIsValidUtf8(std::string_view text) {
  const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
  std::size_t i = 0;
  while (i < text.size()) {
    const unsigned lead = byteAt(i);
    std::size_t length = 0;
    unsigned scalar = 0;
    if (lead < 0x80) {
      length = 1;
      scalar = lead;
    } else if ((lead & 0xE0) == 0xC0) {
      length = 2;
      scalar = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
      length = 3;
      scalar = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
      length = 4;
      scalar = lead & 0x07;
    } else {
      return false;
    }
    if (length > text.size() - i) return false;
    for (std::size_t k = 1; k < length; ++k) {
      const unsigned byte = byteAt(i + k);
      if ((byte & 0xC0) != 0x80) return false;
      scalar = scalar << 6 | (byte & 0x3F);
    }
    const std::size_t needed = scalar < 0x80 ? 1 : scalar < 0x800 ? 2 : scalar < 0x10000 ? 3 : 4;
    const bool surrogate = scalar >= 0xD800 && scalar <= 0xDFFF;
    if (length != needed || surrogate || scalar > 0x10FFFF) return false;
    i += length;
  }
  return true;
}

}  // namespace zolt
