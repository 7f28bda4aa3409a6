#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zolt::vt {

/// Where a parser is: the states of Paul Williams' diagram of DEC's parser (https://vt100.net/emu/dec_ansi_parser).
enum class State : std::uint8_t {
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

/// What a parser does with a character on its way to the next state.
enum class Action : std::uint8_t {
  Ignore,
  Print,
  Execute,         ///< a control character
  Begin,           ///< forgets what a sequence before had collected
  Collect,         ///< a private prefix or an intermediate character
  Parameter,       ///< a digit, a semicolon or a colon
  DispatchEscape,  ///< the last character of an escape sequence
  DispatchCsi,     ///< of a control sequence
  BeginDcs,        ///< the last character before a device control string
  BeginOsc,
  Put,            ///< a character of a string
  EndString,      ///< by BEL or ST
  SuspendString,  ///< an ESC, with which ST may begin
};

struct Transition {
  Action action = Action::Ignore;
  State next = State::Ground;
};

/// Characters from U+00A0 on are all one to the table.
inline constexpr std::size_t kCharacterClasses = 0xA1;
constexpr std::size_t characterClass(char32_t character) {
  return character < 0xA0 ? static_cast<std::size_t>(character) : 0xA0;
}

using TransitionTable = std::array<std::array<Transition, kCharacterClasses>, kStates>;

/// What to do with a character of a class in a state.
extern const TransitionTable kTransitions;

}  // namespace zolt::vt
