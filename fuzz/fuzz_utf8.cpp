// The SIMD validator against the definition, on the whole input and at every alignment.
#include <string>

#include "fuzz/FuzzInput.h"
#include "text/GraphemeClusters.h"
#include "text/NaiveUtf8.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const zolt::FuzzInput input(data, size);
  std::string_view text = input.rest();
  for (int alignment = 0; alignment < 32; ++alignment) {
    zolt::require(zolt::isValidUtf8(text) == zolt::naiveIsValidUtf8(text), "isValidUtf8 differs from the definition");
    if (text.empty()) break;
    text.remove_prefix(1);
  }
  return 0;
}
