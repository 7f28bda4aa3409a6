#include <algorithm>
#include <string>
#include <utility>

#include "vt/cells/Sgr.h"
#include "vt/functions/Csi.h"
#include "vt/functions/Modes.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = ControlSequence;

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
    // Saving this mode saves the cursor; restoring it, like resetting it, restores the cursor.
    if (mode->number == kSavedCursorMode) mode->set(state, true);
    std::erase_if(state.savedModes, [&](const auto& saved) { return saved.first == number; });
    state.savedModes.emplace_back(number, mode->isSet(state));
  }
}

void restoreModes(State& state, const Sequence& sequence) {
  // Modes that were reset come first: of modes that exclude each other, the one that was set must win.
  for (const bool value : {false, true}) {
    for (std::size_t i = 0; i < sequence.parameterCount; ++i) {
      const int number = sequence.parameter(i, 0);
      const auto saved = std::ranges::find(state.savedModes, number, &std::pair<int, bool>::first);
      if (saved != state.savedModes.end() && saved->second == value) findMode(true, number)->set(state, value);
    }
  }
}

void setKeyModifiers(State& state, const Sequence& sequence) {
  KeyboardOptions& keyboard = state.keyboard;
  const KeyboardOptions initial;
  struct Resource {
    int number;
    int KeyboardOptions::*value;
    int max;
  };
  // clang-format off
  constexpr Resource kResources[] = {
      {0, &KeyboardOptions::modifyKeyboard,     15},
      {1, &KeyboardOptions::modifyCursorKeys,   3},
      {2, &KeyboardOptions::modifyFunctionKeys, 3},
      {4, &KeyboardOptions::modifyOtherKeys,    2},
  };
  // clang-format on
  const int number = sequence.parameter(0, -1);
  for (const auto& [resource, value, max] : kResources) {
    if (number >= 0 && number != resource) continue;
    const int given = number < 0 ? Parameter::omitted : sequence.parameter(1, Parameter::omitted);
    if (given <= max) keyboard.*value = given == Parameter::omitted ? initial.*value : given;
  }
}

void disableKeyModifiers(State& state, const Sequence& sequence) {
  const int resource = sequence.parameter(0, 2);
  if (resource == 1) state.keyboard.modifyCursorKeys = -1;
  if (resource == 2) state.keyboard.modifyFunctionKeys = -1;
  if (resource == 4) state.keyboard.modifyOtherKeys = 0;
}

void setKeyFormat(State& state, const Sequence& sequence) {
  if (sequence.parameterCount == 0 || sequence.parameter(0, 0) == 4) {
    state.keyboard.formatOtherKeys = sequence.parameter(1, 0) == 1 ? 1 : 0;
  }
}

constexpr int kAllKeyboardFlags = 31;

void pushKeyboardFlags(State& state, const Sequence& sequence) {
  KeyboardOptions::Flags& flags = state.keyboardFlags();
  if (flags.pushed.size() == KeyboardOptions::maxPushed) flags.pushed.erase(flags.pushed.begin());
  flags.pushed.push_back(flags.current);
  flags.current = static_cast<std::uint8_t>(sequence.parameter(0, 0) & kAllKeyboardFlags);
}

void popKeyboardFlags(State& state, const Sequence& sequence) {
  KeyboardOptions::Flags& flags = state.keyboardFlags();
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
  const int how = sequence.parameter(1, 1);
  if (how == 1) current = static_cast<std::uint8_t>(given);
  if (how == 2) current = static_cast<std::uint8_t>(current | given);
  if (how == 3) current = static_cast<std::uint8_t>(current & ~given);
}

void setCursorShape(State& state, const Sequence& sequence) {
  const int style = sequence.parameter(0, 0);
  if (style > 6) return;
  constexpr CursorShape kShapes[] = {CursorShape::Block, CursorShape::Underline, CursorShape::Bar};
  state.cursorStyle.reset();
  if (style != 0) state.cursorStyle = {.shape = kShapes[(style - 1) / 2], .blinks = style % 2 == 1};
}

void setConformance(State& state, const Sequence& sequence) {
  const int level = sequence.parameter(0, 0);
  if (level < 61 || level > 65) return;
  state.resetSoft();
  state.conformanceLevel = std::min(level, 64);
}

void pushStyle(State& state, const Sequence&) {
  if (state.pushedStyles.size() < State::maxPushed) state.pushedStyles.push_back(state.screen.pen().style);
}

void popStyle(State& state, const Sequence&) {
  if (state.pushedStyles.empty()) return;
  state.screen.style() = state.pushedStyles.back();
  state.pushedStyles.pop_back();
}

void pushColors(State& state, const Sequence&) {
  if (state.pushedPalettes.size() < State::maxPushed) state.pushedPalettes.push_back(state.palette);
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

void resetSoftly(State& state, const Sequence&) {
  state.resetSoft();
}

// clang-format off
constexpr CsiFunction kFunctions[] = {
    {0,   "",   'h', setModes<false, true>,  {"CSI Pm h",         "SM",             "ECMA-48", "Sets ANSI modes."}},
    {0,   "",   'l', setModes<false, false>, {"CSI Pm l",         "RM",             "ECMA-48", "Resets ANSI modes."}},
    {'?', "",   'h', setModes<true, true>,   {"CSI ? Pm h",       "DECSET",         "VT100",   "Sets DEC private modes."}},
    {'?', "",   'l', setModes<true, false>,  {"CSI ? Pm l",       "DECRST",         "VT100",   "Resets DEC private modes."}},
    {'?', "",   's', saveModes,              {"CSI ? Pm s",       "XTSAVE",         "xterm",   "Saves DEC private modes."}},
    {'?', "",   'r', restoreModes,           {"CSI ? Pm r",       "XTRESTORE",      "xterm",   "Restores DEC private modes."}},
    {0,   "",   'm', selectRendition,        {"CSI Pm m",         "SGR",            "ECMA-48", "Sets the rendition of the text that follows."}},
    {'>', "",   'm', setKeyModifiers,        {"CSI > Pp ; Pv m",  "XTMODKEYS",      "xterm",   "Sets how modified keys are encoded."}},
    {'>', "",   'n', disableKeyModifiers,    {"CSI > Ps n",       "XTMODKEYS off",  "xterm",   "Encodes keys without their modifiers."}},
    {'>', "",   'f', setKeyFormat,           {"CSI > Pp ; Pv f",  "XTFMTKEYS",      "xterm",   "Sets the format in which modifyOtherKeys encodes keys."}},
    {'>', "",   'u', pushKeyboardFlags,      {"CSI > Ps u",       "KITTY >u",       "kitty",   "Pushes the keyboard protocol's flags and sets new ones."}},
    {'<', "",   'u', popKeyboardFlags,       {"CSI < Ps u",       "KITTY <u",       "kitty",   "Pops the keyboard protocol's flags."}},
    {'=', "",   'u', setKeyboardFlags,       {"CSI = Ps ; Ps u",  "KITTY =u",       "kitty",   "Replaces the keyboard protocol's flags (1), adds some (2) or removes some (3)."}},
    {0,   " ",  'q', setCursorShape,         {"CSI Ps SP q",      "DECSCUSR",       "VT520",   "Makes the cursor a block, an underline or a bar, blinking or steady; 0: as the user has set it."}},
    {0,   "!",  'p', resetSoftly,            {"CSI ! p",          "DECSTR",         "VT220",   "Soft reset: most modes, the margins and the rendition return to their defaults."}},
    {0,   "\"", 'p', setConformance,         {"CSI Ps ; Ps \" p", "DECSCL",         "VT220",   "Sets the conformance level, which implies a soft reset."}},
    {0,   "#",  '{', pushStyle,              {"CSI # {",          "XTPUSHSGR",      "xterm",   "Pushes the rendition."}},
    {0,   "#",  '}', popStyle,               {"CSI # }",          "XTPOPSGR",       "xterm",   "Pops the rendition."}},
    {0,   "#",  'p', pushStyle,              {"CSI # p",          "XTPUSHSGR #p",   "xterm",   "Like XTPUSHSGR."}},
    {0,   "#",  'q', popStyle,               {"CSI # q",          "XTPOPSGR #q",    "xterm",   "Like XTPOPSGR."}},
    {0,   "#",  'P', pushColors,             {"CSI # P",          "XTPUSHCOLORS",   "xterm",   "Pushes the palette."}},
    {0,   "#",  'Q', popColors,              {"CSI # Q",          "XTPOPCOLORS",    "xterm",   "Pops the palette."}},
    {0,   "#",  'R', reportColors,           {"CSI # R",          "XTREPORTCOLORS", "xterm",   "Reports how many palettes are on the stack."}},
};
// clang-format on

}  // namespace

void selectRendition(State& state, const Sequence& sequence) {
  applyRenditions(sequence, 0, state.screen.style());
}

std::span<const CsiFunction> csiSettings() {
  return kFunctions;
}

}  // namespace zolt::vt
