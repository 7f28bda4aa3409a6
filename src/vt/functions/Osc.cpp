#include "vt/functions/Osc.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include "vt/functions/OscFields.h"

namespace zolt::vt {

namespace {

using State = TerminalState;

constexpr std::size_t kMaxTitleBytes = State::maxTitleBytes;

template <bool icon, bool window>
void setTitle(State& state, std::string_view text) {
  const std::string title = withoutControls(text, kMaxTitleBytes);
  if (icon) state.iconTitle = title;
  if (window) state.title = title;
  state.events.titleChanged = true;
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// RFC 3986 2.1. Fails on a '%' without two hexadecimal digits, and on %00.
std::optional<std::string> percentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '%') {
      decoded.push_back(text[i]);
      continue;
    }
    const int high = i + 2 < text.size() ? hexDigit(text[i + 1]) : -1;
    const int low = i + 2 < text.size() ? hexDigit(text[i + 2]) : -1;
    if (high < 0 || low < 0 || high * 16 + low == 0) return std::nullopt;
    decoded.push_back(static_cast<char>(high * 16 + low));
    i += 2;
  }
  return decoded;
}

// "file://host/path". The file system is not consulted.
void setWorkingDirectory(State& state, std::string_view text) {
  constexpr std::string_view kScheme = "file://";
  if (text.empty()) {
    state.workingDirectory.clear();
    state.workingDirectoryHost.clear();
    return;
  }
  if (!text.starts_with(kScheme)) return;
  text.remove_prefix(kScheme.size());
  const std::size_t slash = text.find('/');
  if (slash == std::string_view::npos) return;
  const std::optional<std::string> path = percentDecoded(text.substr(slash));
  if (!path || !isWorkingDirectory(*path)) return;
  state.workingDirectory = *path;
  state.workingDirectoryHost = withoutControls(text.substr(0, slash), State::maxHostBytes);
}

// Parameters are "key=value" pairs separated by colons; only "id" is defined.
std::string linkId(std::string_view parameters) {
  while (!parameters.empty()) {
    const std::size_t end = std::min(parameters.find(':'), parameters.size());
    const std::string_view parameter = parameters.substr(0, end);
    if (parameter.starts_with("id=")) return withoutControls(parameter.substr(3), LinkTarget::maxIdBytes);
    parameters.remove_prefix(std::min(end + 1, parameters.size()));
  }
  return {};
}

void setLink(State& state, std::string_view text) {
  const std::string_view parameters = takeField(text);
  const bool isLink = !text.empty() && LinkTarget::isUri(text);
  state.screen.setLink(isLink ? LinkTarget{.id = linkId(parameters), .uri = std::string(text)} : LinkTarget{});
}

void addNotification(State& state, std::string_view title, std::string_view body) {
  auto& notifications = state.events.notifications;
  if (notifications.size() == TerminalEvents::maxNotifications) return;
  notifications.push_back({.title = withoutControls(title, 256), .body = withoutControls(body, kMaxTitleBytes)});
}

void setProgress(State& state, std::string_view text) {
  const std::optional<int> kind = fieldNumber(takeField(text));
  const int percent = std::clamp(fieldNumber(takeField(text)).value_or(0), 0, 100);
  if (!kind || *kind > 4) return;
  state.progress = {.kind = static_cast<Progress::Kind>(*kind), .percent = *kind == 0 ? 0 : percent};
}

// "4;..." is ConEmu's progress report. Its other numbers, 1 to 12, are ignored; anything else is a notification.
void notifyOrProgress(State& state, std::string_view text) {
  std::string_view rest = text;
  const std::optional<int> kind = fieldNumber(takeField(rest));
  if (kind == 4) return setProgress(state, rest);
  if (kind && *kind <= 12 && text.find(';') != std::string_view::npos) return;
  addNotification(state, {}, text);
}

void notify(State& state, std::string_view text) {
  if (takeField(text) != "notify") return;
  const std::string_view title = takeField(text);
  addNotification(state, title, text);
}

void markShell(State& state, std::string_view text) {
  const std::string_view kind = takeField(text);
  if (kind == "A") return state.screen.addMark(HistoryMarkKind::PromptStart, 0);
  if (kind == "B") return state.screen.addMark(HistoryMarkKind::CommandStart, 0);
  if (kind == "C") {
    state.commandBegan = state.now;
    return state.screen.addMark(HistoryMarkKind::OutputStart, 0);
  }
  if (kind != "D") return;
  // A status that is not a number counts as a failure.
  const std::string_view status = takeField(text);
  constexpr int kUnknownFailure = 255;
  const int exitStatus = status.empty() ? 0 : fieldNumber(status).value_or(kUnknownFailure);
  state.screen.addMark(HistoryMarkKind::CommandEnd, exitStatus);
  // A shell that marks the end once more, or an end without a beginning, tells of nothing that ran.
  const auto began = std::exchange(state.commandBegan, std::nullopt);
  if (!began || state.events.endedCommands.size() >= TerminalEvents::maxNotifications) return;
  state.events.endedCommands.push_back({.took = state.now - *began, .exitStatus = exitStatus});
}

template <int first>
void setRolesFrom(State& state, std::string_view text) {
  setRoles(state, text, first);
}

template <Palette::Role role>
void resetOneRole(State& state, std::string_view) {
  resetRole(state, role);
}

// clang-format off
constexpr OscCommand kCommands[] = {
    {0,   setTitle<true, true>,                    {"OSC 0 ; Pt ST",                "OSC 0",   "xterm",          "Sets the window title and the icon title."}},
    {1,   setTitle<true, false>,                   {"OSC 1 ; Pt ST",                "OSC 1",   "xterm",          "Sets the icon title."}},
    {2,   setTitle<false, true>,                   {"OSC 2 ; Pt ST",                "OSC 2",   "xterm",          "Sets the window title."}},
    {4,   setColors,                               {"OSC 4 ; Pc ; Pt ST",           "OSC 4",   "xterm",          "Sets or queries (?) palette colours."}},
    {7,   setWorkingDirectory,                     {"OSC 7 ; Pt ST",                "OSC 7",   "Terminal.app",   "Sets the shell's working directory, as a file URL."}},
    {8,   setLink,                                 {"OSC 8 ; params ; URI ST",      "OSC 8",   "VTE",            "Makes the text that follows a hyperlink."}},
    {9,   notifyOrProgress,                        {"OSC 9 ; Pt ST",                "OSC 9",   "iTerm2, ConEmu", "Posts a notification; with 4, reports progress."}},
    {10,  setRolesFrom<10>,                        {"OSC 10 ; Pt ST",               "OSC 10",  "xterm",          "Sets or queries (?) the default foreground."}},
    {11,  setRolesFrom<11>,                        {"OSC 11 ; Pt ST",               "OSC 11",  "xterm",          "Sets or queries (?) the default background."}},
    {12,  setRolesFrom<12>,                        {"OSC 12 ; Pt ST",               "OSC 12",  "xterm",          "Sets or queries (?) the cursor colour."}},
    {52,  useClipboard,                            {"OSC 52 ; Pc ; Pd ST",          "OSC 52",  "xterm",          "Sets the clipboard. Queries are answered only if the settings allow it."}},
    {104, resetColors,                             {"OSC 104 ; Pc ST",              "OSC 104", "xterm",          "Resets some or all palette colours."}},
    {110, resetOneRole<Palette::Role::Foreground>, {"OSC 110 ST",                   "OSC 110", "xterm",          "Resets the default foreground."}},
    {111, resetOneRole<Palette::Role::Background>, {"OSC 111 ST",                   "OSC 111", "xterm",          "Resets the default background."}},
    {112, resetOneRole<Palette::Role::Cursor>,     {"OSC 112 ST",                   "OSC 112", "xterm",          "Resets the cursor colour."}},
    {133, markShell,                               {"OSC 133 ; A ST",               "OSC 133", "FinalTerm",      "Marks the start of a prompt (A), a command (B) and its output (C), and the output's end (D)."}},
    {777, notify,                                  {"OSC 777 ; notify ; Pt ; Pt ST", "OSC 777", "urxvt",         "Posts a notification with a title."}},
};
// clang-format on

}  // namespace

std::span<const OscCommand> oscCommands() {
  return kCommands;
}

void runOsc(TerminalState& state, std::string_view text) {
  const std::optional<int> wanted = fieldNumber(takeField(text));
  if (!wanted) return;
  const auto* const command = std::ranges::find(kCommands, *wanted, &OscCommand::number);
  if (command != std::end(kCommands)) command->run(state, text);
}

}  // namespace zolt::vt
