#pragma once

#include <array>
#include <span>
#include <string_view>

#include "vt/ControlSequence.h"
#include "vt/Documented.h"
#include "vt/TerminalState.h"

namespace zolt::vt {

/// What a control sequence with a prefix, intermediate characters and a final character does.
struct ControlFunction {
  char prefix = 0;
  std::string_view intermediates;
  char final = 0;
  void (*run)(TerminalState&, const ControlSequence&) = nullptr;
  Documented documented;
};

/// What an escape sequence does.
struct EscapeFunction {
  std::string_view intermediates;  ///< all of them; the first alone where `isDesignation`
  char final = 0;                  ///< any where `isDesignation`
  void (*run)(TerminalState&, const EscapeSequence&) = nullptr;
  Documented documented;
  bool isDesignation = false;
};

/// What a C0 or C1 control does.
struct ControlCharacter {
  char32_t character = 0;
  void (*run)(TerminalState&) = nullptr;
  Documented documented;
};

/// The tables, each by what its functions do.
std::span<const ControlFunction> cursorFunctions();
std::span<const ControlFunction> editingFunctions();
std::span<const ControlFunction> rectangleFunctions();
std::span<const ControlFunction> reportFunctions();
std::span<const ControlFunction> settingFunctions();
/// All of them.
std::array<std::span<const ControlFunction>, 5> controlFunctions();

/// The row that every other sequence is: SGR.
void selectRendition(TerminalState& state, const ControlSequence& sequence);

std::span<const EscapeFunction> escapeFunctions();
std::span<const ControlCharacter> controlCharacters();

/// The function for a sequence; null where there is none.
const ControlFunction* findControlFunction(const ControlSequence& sequence);
const EscapeFunction* findEscapeFunction(const EscapeSequence& sequence);
const ControlCharacter* findControlCharacter(char32_t character);

/// What DA1 answers.
std::string_view primaryAttributes();

/// Parameter `index` as a count: 1 where it is omitted or 0.
inline int countOf(const ControlSequence& sequence, std::size_t index = 0) {
  const int count = sequence.parameter(index, 1);
  return count == 0 ? 1 : count;
}

/// Parameters from `first` on as a rectangle: top, left, bottom, right, counted from 1 by the margins in origin mode,
/// clipped to the screen. Empty where the ends cross.
Rectangle rectangleOf(const TerminalState& state, const ControlSequence& sequence, std::size_t first);

}  // namespace zolt::vt
