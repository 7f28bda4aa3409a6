#include "vt/input/InputText.h"

namespace zolt::vt {

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
