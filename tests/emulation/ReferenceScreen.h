#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zolt {

/// The rules of the screen buffer, written down as plainly as possible; TerminalScreenBuffer is tested against it. A
/// cell is its character: nothing here changes colours.
struct ReferenceScreen {
  using Row = std::vector<std::string>;

  std::vector<Row> cells;
  std::vector<Row> scrollback;
  std::int64_t rows = 24;
  std::int64_t cols = 80;
  std::int64_t row = 0;
  std::int64_t col = 0;

  void resize(std::int64_t newRows, std::int64_t newCols);
  void parseAndRender(std::string_view text);
  void clear();

 private:
  void toScrollback();
  void scroll();
};

}  // namespace zolt
