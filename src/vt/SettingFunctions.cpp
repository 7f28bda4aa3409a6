#include <algorithm>
#include <string>
#include <utility>

#include "vt/ControlFunctions.h"
#include "vt/Modes.h"
#include "vt/SgrSequence.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = ControlSequence;

constexpr std::size_t kMaxPushed = 10;
constexpr int kSavedCursorMode = 1048;

template <bool isPrivate, bool value>
void setModes(State& state, const Sequence& sequence) {
  for (std::size_t i = 0; i < sequence.parameterCount; ++i) {
    const Mode* const mode = findMode(isPrivate, sequence.parameter(i, 0));
    if (mode != nullptr && mode->set != nullptr) mode->set(state, value);
  }
}

void saveModes(State& state, const Sequence& sequence) {
  for (std::size_t i = 0; i < sequence.parameterCount; ++i) {
    const int number = sequence.parameter(i, 0);
    const Mode* const mode = findMode(true, number);
    if (mode == nullptr || mode->set == nullptr) continue;
    // What this one saves is the cursor: restoring is what resetting it does.
    if (mode->number == kSavedCursorMode) mode->set(state, true);
    std::erase_if(state.savedModes, [&](const auto& saved) { return saved.first == number; });
    state.savedModes.emplace_back(number, mode->isSet(state));
  }
}

void restoreModes(State& state, const Sequence& sequence) {
  // First what was reset: of modes that exclude each other, the one that was set is to be in force.
  for (const bool value : {false, true}) {
    for (std::size_t i = 0; i < sequence.parameterCount; ++i) {
      const int number = sequence.parameter(i, 0);
      const auto saved = std::ranges::find(state.savedModes, number, &std::pair<int, bool>::first);
      if (saved != state.savedModes.end() && saved->second == value) findMode(true, number)->set(state, value);
    }
  }
}

void setKeyModifiers(State& state, const Sequence& sequence) {
  KeyboardState& keyboard = state.keyboard;
  const KeyboardState initial;
  struct Resource {
    int number;
    int KeyboardState::*value;
    int most;
  };
  constexpr Resource kResources[] = {{0, &KeyboardState::modifyKeyboard, 15},
                                     {1, &KeyboardState::modifyCursorKeys, 3},
                                     {2, &KeyboardState::modifyFunctionKeys, 3},
                                     {4, &KeyboardState::modifyOtherKeys, 2}};
  const int number = sequence.parameter(0, -1);
  for (const auto& [resource, value, most] : kResources) {
    if (number >= 0 && number != resource) continue;
    const int given = number < 0 ? Parameter::omitted : sequence.parameter(1, Parameter::omitted);
    if (given <= most) keyboard.*value = given == Parameter::omitted ? initial.*value : given;
  }
}

void disableKeyModifiers(State& state, const Sequence& sequence) {
  switch (sequence.parameter(0, 2)) {
    case 1:
      state.keyboard.modifyCursorKeys = -1;
      break;
    case 2:
      state.keyboard.modifyFunctionKeys = -1;
      break;
    case 4:
      state.keyboard.modifyOtherKeys = 0;
      break;
    default:
      break;
  }
}

void setKeyFormat(State& state, const Sequence& sequence) {
  if (sequence.parameterCount == 0 || sequence.parameter(0, 0) == 4) {
    state.keyboard.formatOtherKeys = sequence.parameter(1, 0) == 1 ? 1 : 0;
  }
}

constexpr int kAllKeyboardFlags = 31;

void pushKeyboardFlags(State& state, const Sequence& sequence) {
  KeyboardState::Flags& flags = state.keyboardFlags();
  if (flags.pushed.size() == KeyboardState::maxPushed) flags.pushed.erase(flags.pushed.begin());
  flags.pushed.push_back(flags.current);
  flags.current = static_cast<std::uint8_t>(sequence.parameter(0, 0) & kAllKeyboardFlags);
}

void popKeyboardFlags(State& state, const Sequence& sequence) {
  KeyboardState::Flags& flags = state.keyboardFlags();
  for (int count = countOf(sequence); count > 0; --count) {
    if (flags.pushed.empty()) {
      flags.current = 0;
      return;
    }
    flags.current = flags.pushed.back();
    flags.pushed.pop_back();
  }
}

void setKeyboardFlags(State& state, const Sequence& sequence) {
  std::uint8_t& current = state.keyboardFlags().current;
  const int given = sequence.parameter(0, 0) & kAllKeyboardFlags;
  const int way = sequence.parameter(1, 1);
  if (way == 1) current = static_cast<std::uint8_t>(given);
  if (way == 2) current = static_cast<std::uint8_t>(current | given);
  if (way == 3) current = static_cast<std::uint8_t>(current & ~given);
}

void setCursorShape(State& state, const Sequence& sequence) {
  const int style = sequence.parameter(0, 0);
  if (style > 6) return;
  constexpr CursorShape kShapes[] = {CursorShape::Block,     CursorShape::Block,     CursorShape::Block,
                                     CursorShape::Underline, CursorShape::Underline, CursorShape::Bar,
                                     CursorShape::Bar};
  state.cursorShape = kShapes[style];
  state.cursorShapeBlinks = style % 2 == 1 || style == 0;
}

void setConformance(State& state, const Sequence& sequence) {
  const int level = sequence.parameter(0, 0);
  if (level < 61 || level > 65) return;
  state.resetSoft();
  state.conformanceLevel = std::min(level, 64);
}

void pushStyle(State& state, const Sequence&) {
  if (state.pushedStyles.size() < kMaxPushed) state.pushedStyles.push_back(state.screen.pen().style);
}

void popStyle(State& state, const Sequence&) {
  if (state.pushedStyles.empty()) return;
  state.screen.style() = state.pushedStyles.back();
  state.pushedStyles.pop_back();
}

void pushColors(State& state, const Sequence&) {
  if (state.pushedPalettes.size() < kMaxPushed) state.pushedPalettes.push_back(state.palette);
}

void popColors(State& state, const Sequence&) {
  if (state.pushedPalettes.empty()) return;
  state.palette = state.pushedPalettes.back();
  state.pushedPalettes.pop_back();
  state.events.paletteChanged = true;
}

void reportColors(State& state, const Sequence&) {
  const std::string count = std::to_string(state.pushedPalettes.size());
  state.reply("\033[?" + count + ';' + count + "#Q");
}

constexpr ControlFunction kFunctions[] = {
    {0, "", 'h', setModes<false, true>, {"CSI Pm h", "SM", "ECMA-48", "Sets ANSI modes."}},
    {0, "", 'l', setModes<false, false>, {"CSI Pm l", "RM", "ECMA-48", "Resets ANSI modes."}},
    {'?', "", 'h', setModes<true, true>, {"CSI ? Pm h", "DECSET", "VT100", "Sets private modes."}},
    {'?', "", 'l', setModes<true, false>, {"CSI ? Pm l", "DECRST", "VT100", "Resets private modes."}},
    {'?', "", 's', saveModes, {"CSI ? Pm s", "XTSAVE", "xterm", "Saves private modes."}},
    {'?', "", 'r', restoreModes, {"CSI ? Pm r", "XTRESTORE", "xterm", "Restores private modes."}},
    {0, "", 'm', selectRendition, {"CSI Pm m", "SGR", "ECMA-48", "Says how what follows looks."}},
    {'>',
     "",
     'm',
     setKeyModifiers,
     {"CSI > Pp ; Pv m", "XTMODKEYS", "xterm", "Says how keys with modifiers are sent."}},
    {'>', "", 'n', disableKeyModifiers, {"CSI > Ps n", "XTMODKEYS off", "xterm", "Keys are sent without modifiers."}},
    {'>',
     "",
     'f',
     setKeyFormat,
     {"CSI > Pp ; Pv f", "XTFMTKEYS", "xterm", "Says in which form other keys with modifiers are sent."}},
    {'>',
     "",
     'u',
     pushKeyboardFlags,
     {"CSI > Ps u", "KITTY >u", "kitty", "Pushes the keyboard protocol's flags and sets them."}},
    {'<', "", 'u', popKeyboardFlags, {"CSI < Ps u", "KITTY <u", "kitty", "Pops the keyboard protocol's flags."}},
    {'=',
     "",
     'u',
     setKeyboardFlags,
     {"CSI = Ps ; Ps u", "KITTY =u", "kitty",
      "Sets all the keyboard protocol's flags (1), adds some (2), takes some away (3)."}},
    {0,
     " ",
     'q',
     setCursorShape,
     {"CSI Ps SP q", "DECSCUSR", "VT520", "The cursor is a block, a line below or a bar."}},
    {0,
     "!",
     'p',
     [](State& s, const Sequence&) { s.resetSoft(); },
     {"CSI ! p", "DECSTR", "VT220", "Puts most modes, margins and the rendition back."}},
    {0,
     "\"",
     'p',
     setConformance,
     {"CSI Ps ; Ps \" p", "DECSCL", "VT220", "Sets the level of conformance, which resets softly."}},
    {0, "#", '{', pushStyle, {"CSI # {", "XTPUSHSGR", "xterm", "Pushes the rendition."}},
    {0, "#", '}', popStyle, {"CSI # }", "XTPOPSGR", "xterm", "Pops the rendition."}},
    {0, "#", 'p', pushStyle, {"CSI # p", "XTPUSHSGR #p", "xterm", "As XTPUSHSGR."}},
    {0, "#", 'q', popStyle, {"CSI # q", "XTPOPSGR #q", "xterm", "As XTPOPSGR."}},
    {0, "#", 'P', pushColors, {"CSI # P", "XTPUSHCOLORS", "xterm", "Pushes the palette."}},
    {0, "#", 'Q', popColors, {"CSI # Q", "XTPOPCOLORS", "xterm", "Pops the palette."}},
    {0, "#", 'R', reportColors, {"CSI # R", "XTREPORTCOLORS", "xterm", "Tells how many palettes are pushed."}},
};

}  // namespace

void selectRendition(State& state, const Sequence& sequence) {
  applyRenditions(sequence, 0, state.screen.style());
}

std::span<const ControlFunction> settingFunctions() {
  return kFunctions;
}

}  // namespace zolt::vt
