#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zolt::vt {

/// The states of Paul Williams' diagram of DEC's parser (https://vt100.net/emu/dec_ansi_parser).
enum class ParserState : std::uint8_t {
  Ground,
  Escape,
  EscapeIntermediate,
  CsiEntry,
  CsiParam,
  CsiIntermediate,
  CsiIgnore,
  DcsEntry,
  DcsParam,
  DcsIntermediate,
  DcsIgnore,
  DcsString,
  OscString,
  IgnoredString,  ///< SOS, PM and APC
};
inline constexpr std::size_t kStates = 14;

/// What the parser does with a character before it enters the next state.
enum class Action : std::uint8_t {
  Ignore,
  Print,
  Execute,         ///< a control character
  Begin,           ///< discards what the previous sequence had collected
  Collect,         ///< a private prefix or an intermediate
  Parameter,       ///< a digit, a semicolon or a colon
  DispatchEscape,  ///< the final of an escape sequence
  DispatchCsi,     ///< the final of a control sequence
  BeginDcs,        ///< the final that introduces a device control string
  BeginOsc,
  Put,            ///< a character of a string
  EndString,      ///< by BEL or ST
  SuspendString,  ///< an ESC, which may be the start of ST
};

struct Transition {
  Action action = Action::Ignore;
  ParserState next = ParserState::Ground;
};

/// All characters from U+00A0 on are one class.
inline constexpr std::size_t kCharacterClasses = 0xA1;
constexpr std::size_t characterClass(char32_t character) {
  return character < 0xA0 ? static_cast<std::size_t>(character) : 0xA0;
}

using TransitionTable = std::array<std::array<Transition, kCharacterClasses>, kStates>;

/// By state and character class.
extern const TransitionTable kTransitions;

}  // namespace zolt::vt
