#include "terminal/input/WordBounds.h"

#include <algorithm>

#include "text/GraphemeClusters.h"

namespace zolt {

namespace {

bool isSeparator(std::string_view cluster, std::string_view separators) {
  std::size_t start = 0;
  while (start < separators.size()) {
    const std::size_t end = clusterEnd(separators, start);
    if (separators.substr(start, end - start) == cluster) return true;
    start = end;
  }
  return false;
}

}  // namespace

ByteRange wordAt(std::string_view line, std::size_t offset, std::string_view separators) {
  if (offset >= line.size()) return {.begin = line.size(), .end = line.size()};
  ByteRange run;
  std::string_view runSeparator;  // empty in a word
  while (run.end < line.size()) {
    const std::size_t next = clusterEnd(line, run.end);
    const std::string_view cluster = line.substr(run.end, next - run.end);
    const std::string_view separator = isSeparator(cluster, separators) ? cluster : std::string_view();
    if (separator != runSeparator) {
      if (run.end > offset) break;
      run.begin = run.end;
      runSeparator = separator;
    }
    run.end = next;
  }
  return run;
}

}  // namespace zolt
