#pragma once

#include <cstddef>
#include <cstdint>
#include <random>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace zolt {

/// One entry of an alphabet: valid UTF-8, drawn `weight` times as often as an entry of weight 1.
struct Piece {
  std::string_view text;
  unsigned weight = 1;
};

/// Everything that affects where characters begin and end in a terminal: ASCII, controls, escape sequences and their
/// parts, marks, prepended marks, regional indicators, joined emoji, Hangul, C1 controls and characters that are
/// canonically equivalent to ASCII.
extern const std::span<const Piece> terminalAlphabet;

/// Mostly SGR sequences and their parts.
extern const std::span<const Piece> renditionAlphabet;

/// Random numbers and texts. The same seed gives the same results on every machine.
class RandomText {
 public:
  explicit RandomText(std::uint64_t seed, std::span<const Piece> alphabet = terminalAlphabet);

  /// A number from 0 up to, not including, `limit`.
  std::size_t below(std::size_t limit) { return static_cast<std::size_t>(m_engine() % limit); }

  /// A text of fewer than `limit` pieces.
  std::string text(std::size_t limit);

  /// `text` split at random places between scalars, so that each chunk is valid UTF-8. At least one chunk.
  std::vector<std::string_view> chunks(std::string_view text);

 private:
  std::mt19937_64 m_engine;
  std::vector<std::string_view> m_drawn;  // each piece repeated `weight` times
};

/// `text` as it could stand in a C++ string literal.
std::string escaped(std::string_view text);

}  // namespace zolt
