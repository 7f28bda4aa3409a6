#include "base/Diagnostics.h"

#include <cstdio>
#include <string>

namespace zolt {

void printLine(std::string_view line) {
  std::string whole(line);
  whole += '\n';
  std::fwrite(whole.data(), 1, whole.size(), stdout);
  std::fflush(stdout);
}

}  // namespace zolt
