#include "emulation/ReferenceScreen.h"

#include "text/GraphemeClusters.h"

namespace zolt {

namespace {

const std::string kBlank(1, ' ');

}  // namespace

void ReferenceScreen::toScrollback() {
  scrollback.push_back(cells.front());
  cells.erase(cells.begin());
  if (scrollback.size() > 10000) scrollback.erase(scrollback.begin());
}

void ReferenceScreen::scroll() {
  toScrollback();
  cells.emplace_back(static_cast<std::size_t>(cols), kBlank);
  row = rows - 1;
}

void ReferenceScreen::resize(std::int64_t newRows, std::int64_t newCols) {
  rows = newRows;
  cols = newCols;
  while (static_cast<std::int64_t>(cells.size()) < rows) {
    cells.emplace_back(static_cast<std::size_t>(cols), kBlank);
  }
  while (static_cast<std::int64_t>(cells.size()) > rows) {
    toScrollback();
  }
  for (Row& line : cells) {
    while (static_cast<std::int64_t>(line.size()) < cols) {
      line.push_back(kBlank);
    }
    while (static_cast<std::int64_t>(line.size()) > cols) {
      line.pop_back();
    }
  }
}

void ReferenceScreen::parseAndRender(std::string_view text) {
  while (!text.empty()) {
    const std::string character(text.substr(0, longClusterEnd(text, 0)));
    text.remove_prefix(character.size());
    if (character == "\n") {
      row += 1;
      col = 0;
      if (!(row < rows)) scroll();
    } else if (character == "\r") {
      col = 0;
    } else if (character == "\t") {
      col = (col / 8) * 8 + 8;
      if (col >= cols) {
        col = 0;
        row += 1;
      }
    } else if (character == "\x1B") {
      continue;
    } else if (row < rows && col < cols) {
      cells[static_cast<std::size_t>(row)][static_cast<std::size_t>(col)] = character;
      col += 1;
      if (col >= cols) {
        col = 0;
        row += 1;
        if (row >= rows) scroll();
      }
    }
  }
}

void ReferenceScreen::clear() {
  for (Row& line : cells) {
    for (std::string& cell : line) {
      cell = kBlank;
    }
  }
  row = col = 0;
}

}  // namespace zolt
