#pragma once

#include <string>

namespace zolt::test {

/// "line 0" to "line N-1", each with a line end.
inline std::string numberedLines(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += "line " + std::to_string(i) + "\n";
  }
  return text;
}

}  // namespace zolt::test
