// sample KIND BYTES: prints about BYTES bytes of a sample text; KIND is a word of kKinds.
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "Samples.h"

namespace {

struct Kind {
  std::string_view name;
  std::string (*text)(std::size_t bytes);
};

constexpr Kind kKinds[] = {
    {"plain", zolt::bench::plainLog},         {"coloured", zolt::bench::colouredLog},
    {"colours", zolt::bench::manyColoursLog}, {"redraws", zolt::bench::directColourRedraws},
    {"mixed", zolt::bench::mixedUtf8Log},     {"palette", zolt::bench::paletteLog},
    {"direct", zolt::bench::directColourLog}, {"line", zolt::bench::endlessLine},
    {"places", zolt::bench::redraws},
};

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) return 2;
  for (const Kind& kind : kKinds) {
    if (kind.name != argv[1]) continue;
    const std::string text = kind.text(std::strtoull(argv[2], nullptr, 10));
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size() && std::fflush(stdout) == 0 ? 0 : 1;
  }
  return 2;
}
