#include <algorithm>
#include <array>
#include <cstdio>

#include "vt/cells/Sgr.h"
#include "vt/functions/Csi.h"

namespace zolt::vt {

namespace {

using State = TerminalState;
using Sequence = ControlSequence;

void copyArea(State& state, const Sequence& sequence) {
  const Rectangle from = rectangleOf(state, sequence, 0);
  if (from.isEmpty()) return;
  const Rectangle margins = state.screen.modes.origin ? state.screen.margins() : Rectangle{};
  const auto position = [&](std::size_t index, int origin) {
    return origin + std::min(std::max(sequence.parameter(index, 1), 1), Screen::maxSide) - 1;
  };
  // Parameters 4 and 7 are pages; there is only one.
  state.screen.copyRectangle(from,
                             {.row = position(5, margins.rows.begin), .column = position(6, margins.columns.begin)});
}

void fillArea(State& state, const Sequence& sequence) {
  const int character = sequence.parameter(0, 0);
  const bool isPrinted = (character >= 0x20 && character <= 0x7E) || (character >= 0xA0 && character <= 0xFF);
  if (!isPrinted) return;
  // ASCII is mapped through the character set in use.
  const CharacterSets& sets = state.screen.characterSets;
  const char32_t printed = character <= 0x7E ? translated(sets.sets[sets.inUse], static_cast<char>(character))
                                             : static_cast<char32_t>(character);
  state.screen.fillRectangle(rectangleOf(state, sequence, 1), printed);
}

void changeAttributes(State& state, const Sequence& sequence) {
  const Rectangle area = rectangleOf(state, sequence, 0);
  if (area.isEmpty() || sequence.parameterCount < 5) return;
  state.screen.changeStyles(area, state.rectanglesAreStreams,
                            [&](Style& style) { applyRenditions(sequence, 4, style); });
}

// Toggles the rendition that SGR `number` sets; 0 toggles bold, underline, blink and inverse.
void reverse(Style& style, int number) {
  const auto flip = [&](StyleFlag flag) { style.flags = static_cast<std::uint16_t>(style.flags ^ flag); };
  const bool all = number == 0;
  if (all || number == 1) flip(kBold);
  if (all || number == 4) style.underline = style.underline == Underline::None ? Underline::Single : Underline::None;
  if (all || number == 5) flip(kBlink);
  if (all || number == 7) flip(kInverse);
  if (number == 8) flip(kHidden);
}

void reverseAttributes(State& state, const Sequence& sequence) {
  const Rectangle area = rectangleOf(state, sequence, 0);
  if (area.isEmpty() || sequence.parameterCount < 5) return;
  state.screen.changeStyles(area, state.rectanglesAreStreams, [&](Style& style) {
    for (std::size_t i = 4; i < sequence.parameterCount; ++i) {
      reverse(style, sequence.parameter(i, 0));
    }
  });
}

// SPA protects only from ED, EL and ECH.
void eraseAreaSelectively(State& state, const Sequence& sequence) {
  const Protection kept = state.screen.protection == Protection::Dec ? Protection::Dec : Protection::None;
  state.screen.eraseRectangle(rectangleOf(state, sequence, 0), kept);
}

void setExtent(State& state, const Sequence& sequence) {
  const int extent = sequence.parameter(0, 0);
  if (extent <= 2) state.rectanglesAreStreams = extent != 2;
}

void reportChecksum(State& state, const Sequence& sequence) {
  if (!state.settings.allowRectangleChecksums) return;
  // Parameter 1 is the page.
  const std::uint16_t checksum = state.screen.checksum(rectangleOf(state, sequence, 2));
  std::array<char, 40> text{};
  const int size = std::snprintf(text.data(), text.size(), "\033P%d!~%04X\033\\", sequence.parameter(0, 0), checksum);
  state.reply({text.data(), static_cast<std::size_t>(size)});
}

void eraseArea(State& state, const Sequence& sequence) {
  state.screen.eraseRectangle(rectangleOf(state, sequence, 0), Protection::None);
}

// clang-format off
constexpr CsiFunction kFunctions[] = {
    {0, "$", 'v', copyArea,             {"CSI Pt;Pl;Pb;Pr;Pp;Pt;Pl;Pp $ v", "DECCRA",   "VT420", "Copies a rectangle."}},
    {0, "$", 'x', fillArea,             {"CSI Pc;Pt;Pl;Pb;Pr $ x",          "DECFRA",   "VT420", "Fills a rectangle with a character."}},
    {0, "$", 'z', eraseArea,            {"CSI Pt;Pl;Pb;Pr $ z",             "DECERA",   "VT420", "Erases a rectangle."}},
    {0, "$", '{', eraseAreaSelectively, {"CSI Pt;Pl;Pb;Pr $ {",             "DECSERA",  "VT420", "Erases a rectangle, except cells protected by DECSCA."}},
    {0, "$", 'r', changeAttributes,     {"CSI Pt;Pl;Pb;Pr;Ps $ r",          "DECCARA",  "VT420", "Applies SGR renditions to a rectangle."}},
    {0, "$", 't', reverseAttributes,    {"CSI Pt;Pl;Pb;Pr;Ps $ t",          "DECRARA",  "VT420", "Toggles SGR renditions in a rectangle."}},
    {0, "*", 'x', setExtent,            {"CSI Ps * x",                      "DECSACE",  "VT420", "Whether DECCARA and DECRARA affect a rectangle (2) or a stream of text between its corners (0, 1)."}},
    {0, "*", 'y', reportChecksum,       {"CSI Pi;Pp;Pt;Pl;Pb;Pr * y",       "DECRQCRA", "VT420", "Reports the checksum of a rectangle, if the settings allow it."}},
};
// clang-format on

}  // namespace

std::span<const CsiFunction> csiRectangles() {
  return kFunctions;
}

}  // namespace zolt::vt
