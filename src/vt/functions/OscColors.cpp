#include <string>

#include "vt/functions/OscFields.h"

namespace zolt::vt {

namespace {

constexpr int kLastRoleCommand = 12;
constexpr int kFirstRoleCommand = 10;

void replyColor(TerminalState& state, const std::string& command, const Rgb& color) {
  std::string answer = "\033]";
  answer += command;
  answer += ';';
  answer += colorReport(color);
  answer += state.commandEnd();
  state.reply(answer);
}

}  // namespace

void setColors(TerminalState& state, std::string_view rest) {
  while (!rest.empty()) {
    const std::optional<int> number = fieldNumber(takeField(rest));
    const std::string_view value = takeField(rest);
    if (!number || *number > 255) continue;
    const auto index = static_cast<std::uint8_t>(*number);
    if (value == "?") {
      replyColor(state, "4;" + std::to_string(index), state.palette.indexed(index));
    } else if (const auto color = parseColor(value)) {
      state.palette.setIndexed(index, *color);
      state.events.paletteChanged = true;
    }
  }
}

void resetColors(TerminalState& state, std::string_view rest) {
  state.events.paletteChanged = true;
  if (rest.empty()) {
    for (int index = 0; index < 256; ++index) {
      state.palette.resetIndexed(static_cast<std::uint8_t>(index));
    }
  }
  while (!rest.empty()) {
    const std::optional<int> index = fieldNumber(takeField(rest));
    if (index && *index <= 255) state.palette.resetIndexed(static_cast<std::uint8_t>(*index));
  }
}

// Each further colour is for the command with the next number.
void setRoles(TerminalState& state, std::string_view rest, int first) {
  for (int command = first; command <= kLastRoleCommand && !rest.empty(); ++command) {
    const auto role = static_cast<Palette::Role>(command - kFirstRoleCommand);
    const std::string_view value = takeField(rest);
    if (value == "?") {
      replyColor(state, std::to_string(command), state.palette.role(role));
    } else if (const auto color = parseColor(value)) {
      state.palette.setRole(role, *color);
      state.events.paletteChanged = true;
    }
  }
}

void resetRole(TerminalState& state, Palette::Role role) {
  state.palette.resetRole(role);
  state.events.paletteChanged = true;
}

}  // namespace zolt::vt
