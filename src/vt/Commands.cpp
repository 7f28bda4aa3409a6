#include <sodium.h>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "vt/StringFunctions.h"

namespace zolt::vt {

namespace {

using State = TerminalState;

constexpr std::size_t kMaxTitleBytes = 1024;
constexpr std::size_t kMaxUriBytes = 2083;
constexpr std::size_t kMaxLinkIdBytes = 250;
constexpr std::size_t kMaxPathBytes = 4096;

// What stands before the next semicolon; the rest stays.
std::string_view field(std::string_view& rest) {
  const std::size_t end = std::min(rest.find(';'), rest.size());
  const std::string_view first = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return first;
}

std::optional<int> number(std::string_view text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc{} || end != text.data() + text.size() || value < 0) return std::nullopt;
  return value;
}

template <bool icon, bool window>
void setTitle(State& state, std::string_view text) {
  const std::string title = withoutControls(text, kMaxTitleBytes);
  if (icon) state.iconTitle = title;
  if (window) state.title = title;
  state.events.titleChanged = true;
}

void replyColor(State& state, const std::string& command, const Rgb& color) {
  std::string answer = "\033]";
  answer += command;
  answer += ';';
  answer += colorReport(color);
  answer += state.commandEnd();
  state.reply(answer);
}

void setColors(State& state, std::string_view rest) {
  while (!rest.empty()) {
    const std::optional<int> index = number(field(rest));
    const std::string_view value = field(rest);
    if (!index || *index > 255) continue;
    const auto place = static_cast<std::uint8_t>(*index);
    if (value == "?") {
      replyColor(state, "4;" + std::to_string(place), state.palette.indexed(place));
    } else if (const auto color = parseColor(value)) {
      state.palette.setIndexed(place, *color);
      state.events.paletteChanged = true;
    }
  }
}

void resetColors(State& state, std::string_view rest) {
  state.events.paletteChanged = true;
  if (rest.empty()) {
    for (int index = 0; index < 256; ++index) {
      state.palette.resetIndexed(static_cast<std::uint8_t>(index));
    }
  }
  while (!rest.empty()) {
    const std::optional<int> index = number(field(rest));
    if (index && *index <= 255) state.palette.resetIndexed(static_cast<std::uint8_t>(*index));
  }
}

// 10, 11 and 12: a second colour is the next one's.
template <int first>
void setRoles(State& state, std::string_view rest) {
  for (int command = first; command <= 12 && !rest.empty(); ++command) {
    const auto role = static_cast<Palette::Role>(command - 10);
    const std::string_view value = field(rest);
    if (value == "?") {
      replyColor(state, std::to_string(command), state.palette.role(role));
    } else if (const auto color = parseColor(value)) {
      state.palette.setRole(role, *color);
      state.events.paletteChanged = true;
    }
  }
}

template <Palette::Role role>
void resetRole(State& state, std::string_view) {
  state.palette.resetRole(role);
  state.events.paletteChanged = true;
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

// RFC 3986 2.1; nothing where a '%' is followed by no two digits, or gives a NUL.
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

// "file://host/path". What is in the file system is never looked at here.
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
  // A control character in a path is a trap for whoever shows it.
  const auto isControl = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
  if (!path || path->size() > kMaxPathBytes || std::ranges::any_of(*path, isControl)) return;
  state.workingDirectory = *path;
  state.workingDirectoryHost = withoutControls(text.substr(0, slash), 255);
}

bool isUri(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c > 0x20 && c < 0x7F; });
}

// Parameters are "key=value" between colons; only "id" means something.
std::string linkId(std::string_view parameters) {
  while (!parameters.empty()) {
    const std::size_t end = std::min(parameters.find(':'), parameters.size());
    const std::string_view parameter = parameters.substr(0, end);
    if (parameter.starts_with("id=")) return withoutControls(parameter.substr(3), kMaxLinkIdBytes);
    parameters.remove_prefix(std::min(end + 1, parameters.size()));
  }
  return {};
}

void setLink(State& state, std::string_view text) {
  const std::string_view parameters = field(text);
  const bool isLink = !text.empty() && text.size() <= kMaxUriBytes && isUri(text);
  state.screen.setLink(isLink ? LinkTarget{.id = linkId(parameters), .uri = std::string(text)} : LinkTarget{});
}

void addNotification(State& state, std::string_view title, std::string_view body) {
  auto& notifications = state.events.notifications;
  if (notifications.size() == TerminalEvents::maxNotifications) return;
  notifications.push_back({.title = withoutControls(title, 256), .body = withoutControls(body, kMaxTitleBytes)});
}

void setProgress(State& state, std::string_view text) {
  const std::optional<int> kind = number(field(text));
  const int percent = std::clamp(number(field(text)).value_or(0), 0, 100);
  if (!kind || *kind > 4) return;
  state.progress = {.kind = static_cast<Progress::Kind>(*kind), .percent = *kind == 0 ? 0 : percent};
}

// "4;..." is progress; other numbers are functions of another terminal, and everything else is a message.
void notifyOrProgress(State& state, std::string_view text) {
  std::string_view rest = text;
  const std::optional<int> kind = number(field(rest));
  if (kind == 4) return setProgress(state, rest);
  if (kind && *kind <= 12 && text.find(';') != std::string_view::npos) return;
  addNotification(state, {}, text);
}

void notify(State& state, std::string_view text) {
  if (field(text) != "notify") return;
  const std::string_view title = field(text);
  addNotification(state, title, text);
}

std::optional<std::string> base64Decoded(std::string_view text) {
  std::string decoded(text.size() / 4 * 3 + 3, '\0');
  for (const int variant : {sodium_base64_VARIANT_ORIGINAL, sodium_base64_VARIANT_ORIGINAL_NO_PADDING}) {
    std::size_t size = 0;
    const char* end = nullptr;
    const int failed = sodium_base642bin(reinterpret_cast<unsigned char*>(decoded.data()), decoded.size(), text.data(),
                                         text.size(), "\r\n ", &size, &end, variant);
    if (failed == 0 && end == text.data() + text.size()) {
      decoded.resize(size);
      return decoded;
    }
  }
  return std::nullopt;
}

void useClipboard(State& state, std::string_view text) {
  const std::string_view names = field(text);
  const bool isPrimary = !names.empty() && names.find('c') == std::string_view::npos &&
                         names.find_first_of("ps") != std::string_view::npos;
  const ClipboardTarget target = isPrimary ? ClipboardTarget::Primary : ClipboardTarget::Clipboard;
  if (text == "?") {
    auto& reads = state.events.clipboardReads;
    const bool isNew = std::ranges::find(reads, target) == reads.end();
    if (state.settings.allowClipboardReads && isNew) reads.push_back(target);
    return;
  }
  if (!state.settings.allowClipboardWrites) return;
  // What is no base 64 empties the clipboard, as xterm has it: it is given no bytes that nobody meant.
  auto& writes = state.events.clipboardWrites;
  std::erase_if(writes, [&](const ClipboardWrite& write) { return write.target == target; });
  writes.push_back({.target = target, .text = base64Decoded(text).value_or("")});
}

void markShell(State& state, std::string_view text) {
  const std::string_view kind = field(text);
  if (kind == "A") return state.screen.addMark(HistoryMarkKind::PromptStart, 0);
  if (kind == "B") return state.screen.addMark(HistoryMarkKind::CommandStart, 0);
  if (kind == "C") return state.screen.addMark(HistoryMarkKind::OutputStart, 0);
  if (kind != "D") return;
  // A number that is none of a program is a failure, whichever it was.
  const std::string_view status = field(text);
  constexpr int kUnknownFailure = 255;
  state.screen.addMark(HistoryMarkKind::CommandEnd, status.empty() ? 0 : number(status).value_or(kUnknownFailure));
}

constexpr Command kCommands[] = {
    {0, setTitle<true, true>, {"OSC 0 ; Pt ST", "OSC 0", "xterm", "Sets the window's and the icon's title."}},
    {1, setTitle<true, false>, {"OSC 1 ; Pt ST", "OSC 1", "xterm", "Sets the icon's title."}},
    {2, setTitle<false, true>, {"OSC 2 ; Pt ST", "OSC 2", "xterm", "Sets the window's title."}},
    {4, setColors, {"OSC 4 ; Pc ; Pt ST", "OSC 4", "xterm", "Sets colours of the palette, or tells them (?)."}},
    {7, setWorkingDirectory, {"OSC 7 ; Pt ST", "OSC 7", "Terminal.app", "Tells the shell's folder, as a file URL."}},
    {8, setLink, {"OSC 8 ; params ; URI ST", "OSC 8", "VTE", "What follows leads to an address."}},
    {9, notifyOrProgress, {"OSC 9 ; Pt ST", "OSC 9", "iTerm2, ConEmu", "Shows a message; with 4, tells progress."}},
    {10, setRoles<10>, {"OSC 10 ; Pt ST", "OSC 10", "xterm", "Sets the default foreground, or tells it (?)."}},
    {11, setRoles<11>, {"OSC 11 ; Pt ST", "OSC 11", "xterm", "Sets the default background, or tells it (?)."}},
    {12, setRoles<12>, {"OSC 12 ; Pt ST", "OSC 12", "xterm", "Sets the cursor's colour, or tells it (?)."}},
    {52,
     useClipboard,
     {"OSC 52 ; Pc ; Pd ST", "OSC 52", "xterm", "Sets the clipboard. It is read only where the settings allow it."}},
    {104, resetColors, {"OSC 104 ; Pc ST", "OSC 104", "xterm", "Puts colours of the palette back, or all of them."}},
    {110,
     resetRole<Palette::Role::Foreground>,
     {"OSC 110 ST", "OSC 110", "xterm", "Puts the default foreground back."}},
    {111,
     resetRole<Palette::Role::Background>,
     {"OSC 111 ST", "OSC 111", "xterm", "Puts the default background back."}},
    {112, resetRole<Palette::Role::Cursor>, {"OSC 112 ST", "OSC 112", "xterm", "Puts the cursor's colour back."}},
    {133,
     markShell,
     {"OSC 133 ; A ST", "OSC 133", "FinalTerm",
      "Marks where prompts (A), commands (B), output (C) begin and end (D)."}},
    {777, notify, {"OSC 777 ; notify ; Pt ; Pt ST", "OSC 777", "urxvt", "Shows a message with a title."}},
};

}  // namespace

std::span<const Command> commands() {
  return kCommands;
}

std::string clipboardReport(ClipboardTarget target, std::string_view text) {
  std::string encoded(sodium_base64_encoded_len(text.size(), sodium_base64_VARIANT_ORIGINAL), '\0');
  sodium_bin2base64(encoded.data(), encoded.size(), reinterpret_cast<const unsigned char*>(text.data()), text.size(),
                    sodium_base64_VARIANT_ORIGINAL);
  encoded.pop_back();  // the terminating NUL
  std::string report = target == ClipboardTarget::Primary ? "\033]52;p;" : "\033]52;c;";
  report += encoded;
  report += "\033\\";
  return report;
}

void runCommand(TerminalState& state, std::string_view text) {
  const std::optional<int> wanted = number(field(text));
  if (!wanted) return;
  const auto* const command = std::ranges::find(kCommands, *wanted, &Command::number);
  if (command != std::end(kCommands)) command->run(state, text);
}

}  // namespace zolt::vt
