#include "text/RandomText.h"

#include <array>
#include <cstdio>

namespace zolt {

namespace {

using namespace std::string_view_literals;

constexpr std::array kTerminalPieces{
    Piece{"a", 8},
    Piece{"e", 2},
    Piece{"Z", 2},
    Piece{" ", 3},
    Piece{"some words", 2},
    Piece{"a line that is longer than one vector of bytes", 1},
    Piece{"\r", 3},
    Piece{"\n", 3},
    Piece{"\r\n", 2},
    Piece{"\t", 2},
    Piece{"\x1B", 10},
    Piece{"\x1B[", 6},
    Piece{"\x1B]", 1},
    Piece{"[", 5},
    Piece{"]", 2},
    Piece{"(", 1},
    Piece{"*", 1},
    Piece{"0", 3},
    Piece{"1", 3},
    Piece{"3", 3},
    Piece{"5", 1},
    Piece{"9", 1},
    Piece{"38;5;", 1},
    Piece{"48;2;", 1},
    Piece{"-", 1},
    Piece{"+", 1},
    Piece{";", 4},
    Piece{"?", 1},
    Piece{"m", 8},
    Piece{"K", 1},
    Piece{"@", 1},
    Piece{"~", 1},
    Piece{"\x07", 3},
    Piece{"\\", 3},
    Piece{"\x7F", 1},
    Piece{"\0"sv, 1},
    Piece{"\u0085", 1},                                      // a C1 control
    Piece{"\u009B", 1},                                      // the C1 control that other terminals take for ESC [
    Piece{"\u0301", 3},                                      // combining acute accent: composes with letters
    Piece{"\u0308", 2},                                      // combining diaeresis
    Piece{"\u0323", 2},                                      // combining dot below: sorts before the marks above
    Piece{"\u200D", 2},                                      // zero width joiner
    Piece{"\uFE0F", 1},                                      // variation selector
    Piece{"\u0903", 1},                                      // a spacing mark
    Piece{"\u0600", 2},                                      // Prepend: one character with what follows
    Piece{"\u00E9", 1},                                      // e with an acute accent
    Piece{"\u2192", 1},                                      // an arrow
    Piece{"\u037E", 1},                                      // canonically a semicolon
    Piece{"\u212A", 1},                                      // canonically a K
    Piece{"\u1FEF", 1},                                      // canonically a grave accent
    Piece{"\U0001F1E9", 2},                                  // regional indicator D
    Piece{"\U0001F1EA", 1},                                  // regional indicator E
    Piece{"\U0001F600", 1},                                  // an emoji
    Piece{"\U0001F468\u200D\U0001F469\u200D\U0001F467", 1},  // a family: one character
    Piece{"\u1100", 1},                                      // Hangul L
    Piece{"\u1161", 1},                                      // Hangul V
    Piece{"\u11A8", 1},                                      // Hangul T
    Piece{"\uAC00", 1},                                      // Hangul LV
};

constexpr std::array kRenditionPieces{
    Piece{"x", 6},      Piece{"\x1B[", 20}, Piece{"m", 20},
    Piece{";", 24},     Piece{"\x1B[m", 1}, Piece{"0", 2},
    Piece{"1", 4},      Piece{"2", 6},      Piece{"3", 4},
    Piece{"4", 4},      Piece{"5", 3},      Piece{"7", 4},
    Piece{"8", 3},      Piece{"9", 4},      Piece{"22", 2},
    Piece{"27", 1},     Piece{"31", 2},     Piece{"38", 3},
    Piece{"38;5;", 6},  Piece{"38;2;", 6},  Piece{"48", 3},
    Piece{"48;5;", 6},  Piece{"48;2;", 6},  Piece{"39", 1},
    Piece{"49", 1},     Piece{"97", 1},     Piece{"103", 1},
    Piece{"255", 2},    Piece{"196", 1},    Piece{"244", 1},
    Piece{"1000", 1},   Piece{"-", 1},      Piece{"+", 2},
    Piece{"?", 1},      Piece{"\u037E", 1}, Piece{"\u0301", 1},
    Piece{"\u212A", 1}, Piece{" ", 1},      Piece{"99999999999999999999", 1},
};

}  // namespace

const std::span<const Piece> terminalAlphabet = kTerminalPieces;
const std::span<const Piece> renditionAlphabet = kRenditionPieces;

RandomText::RandomText(std::uint64_t seed, std::span<const Piece> alphabet) : m_engine(seed) {
  for (const Piece& piece : alphabet) {
    m_drawn.insert(m_drawn.end(), piece.weight, piece.text);
  }
}

std::string RandomText::text(std::size_t limit) {
  std::string result;
  for (std::size_t left = below(limit); left > 0; --left) {
    result += m_drawn[below(m_drawn.size())];
  }
  return result;
}

std::vector<std::string_view> RandomText::chunks(std::string_view text) {
  std::vector<std::string_view> result;
  while (true) {
    std::size_t end = std::min(text.size(), 1 + below(12));
    while (end < text.size() && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80) {
      ++end;
    }
    result.push_back(text.substr(0, end));
    text.remove_prefix(end);
    if (text.empty()) return result;
  }
}

std::string escaped(std::string_view text) {
  std::string result = "\"";
  for (const char c : text) {
    if (c >= 0x20 && c < 0x7F && c != '"' && c != '\\') {
      result += c;
    } else {
      std::array<char, 8> octal{};
      std::snprintf(octal.data(), octal.size(), "\\%03o", static_cast<unsigned char>(c));
      result += octal.data();
    }
  }
  return result + '"';
}

}  // namespace zolt
