#include "history/LogTexts.h"

#include <array>

namespace zolt {

namespace {

constexpr std::array kLogPieces{
    Piece{"a", 6},
    Piece{"word ", 10},
    Piece{"\n", 6},
    Piece{"\r", 2},
    Piece{"\r\n", 2},
    Piece{"\n\n\n", 1},
    Piece{"\t", 4},
    Piece{"\t\t", 1},
    Piece{"1234567890123456789012345678901234567890123456789012345678901234567890", 3},
};

std::string repeated(std::string_view piece, std::size_t bytes) {
  std::string text;
  while (text.size() < bytes) {
    text += piece;
  }
  return text;
}

std::string mixed(std::uint64_t seed, std::size_t bytes) {
  RandomText random(seed, logAlphabet);
  std::string text;
  while (text.size() < bytes) {
    switch (random.below(40)) {
      case 0:
        text += repeated("a long line without a tab. ", random.below(2 * TextBlock::capacity));
        break;
      case 1:
        text += repeated("a\tlong\tline\twith tabs ", random.below(TextBlock::capacity));
        break;
      case 2:
        text += repeated("\n", random.below(3000));
        break;
      default:
        text += random.text(400);
    }
  }
  return text;
}

}  // namespace

const std::span<const Piece> logAlphabet = kLogPieces;

void Log::append(std::string_view text) {
  storage.append(AttributedString(text, {}));
  naive.append(text);
}

void Log::appendByBytes(std::string_view text) {
  for (std::size_t i = 0; i < text.size(); ++i) {
    append(text.substr(i, 1));
  }
}

std::vector<NamedText> severalBlocksOfText() {
  constexpr std::size_t kBytes = 4 * TextBlock::capacity + 1000;
  return {
      {"short lines", repeated("one of many lines\n", kBytes)},
      {"wrapping lines", repeated(std::string(150, 'x') + "\r\n", kBytes)},
      {"few long lines", repeated(std::string(30000, 'x') + "\n", kBytes)},
      {"one endless line", std::string(kBytes, 'x')},
      {"tabs only", std::string(kBytes, '\t')},
      {"tabs and text", repeated("\tabc\tdefghijk\tl", kBytes)},
      {"lines with tabs", repeated("name\tvalue\tanother value\n\n\t\t-\r", kBytes)},
      {"line feeds only", std::string(kBytes, '\n')},
      {"carriage returns only", std::string(kBytes, '\r')},
      {"pairs only", repeated("\r\n", kBytes)},
      {"mixed", mixed(30, kBytes)},
      {"mixed differently", mixed(31, kBytes)},
  };
}

std::vector<std::string> boundaryEndings() {
  return {"aaaaaaaa", "\n", "\r",     "\r\n",     "\n\r",     "\r\r\n",  "\r\n\r\n", "\r\n\n",   "\r\r",
          "\n\n\n",   "\t", "\t\t\t", "\r\n\tab", "a\r\nb\t", "ab\n\tc", "\ta\r\n",  "abc\r\nd", "\ra\n"};
}

}  // namespace zolt
