#include "vt/InputText.h"

namespace zolt::vt {

void appendUtf8(std::string& out, char32_t scalar) {
  const auto put = [&](char32_t byte) { out.push_back(static_cast<char>(byte)); };
  if (scalar < 0x80) return put(scalar);
  const int continuations = scalar < 0x800 ? 1 : scalar < 0x10000 ? 2 : 3;
  put((0xF00U >> (continuations + 1) & 0xFF) | scalar >> (6 * continuations));
  for (int rest = continuations - 1; rest >= 0; --rest) {
    put(0x80 | (scalar >> (6 * rest) & 0x3F));
  }
}

std::u32string plainScalars(std::string_view bytes) {
  std::u32string scalars;
  forEachScalar(bytes, [&](char32_t scalar) {
    if (isPlain(scalar)) scalars += scalar;
  });
  return scalars;
}

std::string toUtf8(std::u32string_view scalars) {
  std::string bytes;
  for (const char32_t scalar : scalars) {
    appendUtf8(bytes, scalar);
  }
  return bytes;
}

}  // namespace zolt::vt
