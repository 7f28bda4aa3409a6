#include "base/Fatal.h"

#include <cstdio>
#include <cstdlib>
#include <string>

#include "base/Diagnostics.h"

namespace zolt {

void fatalError(std::string_view reason) noexcept {
  std::fflush(stdout);
  printErrorLine("zolt: fatal: " + std::string(reason));
  std::abort();
}

}  // namespace zolt
