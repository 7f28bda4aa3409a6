#pragma once

#include <algorithm>
#include <charconv>
#include <optional>
#include <string_view>

#include "vt/state/TerminalState.h"

namespace zolt::vt {

/// Takes the field before the next semicolon off the front of `rest`.
inline std::string_view takeField(std::string_view& rest) {
  const std::size_t end = std::min(rest.find(';'), rest.size());
  const std::string_view first = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return first;
}

/// A field that is nothing but a non-negative decimal number.
inline std::optional<int> fieldNumber(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || value < 0) return std::nullopt;
  return value;
}

// OscColors.cpp: the palette (OSC 4, 104) and the default and cursor colours (OSC 10 to 12, 110 to 112).
void setColors(TerminalState& state, std::string_view rest);
void resetColors(TerminalState& state, std::string_view rest);
void setRoles(TerminalState& state, std::string_view rest, int first);
void resetRole(TerminalState& state, Palette::Role role);

// OscClipboard.cpp: OSC 52.
void useClipboard(TerminalState& state, std::string_view text);

}  // namespace zolt::vt
