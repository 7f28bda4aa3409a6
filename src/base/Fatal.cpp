#include "base/Fatal.h"

#include <cstdio>
#include <cstdlib>

namespace zolt {

void fatalError(std::string_view reason) noexcept {
  std::fflush(stdout);
  std::fprintf(stderr, "zolt: fatal: %.*s\n", static_cast<int>(reason.size()), reason.data());
  std::fflush(stderr);
  std::abort();
}

}  // namespace zolt
