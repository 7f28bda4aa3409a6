#include "vt/state/TerminalState.h"

#include <algorithm>
#include <utility>

#include "text/Utf8.h"
#include "vt/input/InputText.h"

namespace zolt::vt {

namespace {

// Replies are taken after each feed; a program that floods the terminal with queries gets no more than this at a time.
constexpr std::size_t kMaxPendingReplies = std::size_t{1} << 20;

// Bidirectional formatting characters, which could disguise a title or a notification.
bool isDirectionControl(char32_t scalar) {
  return scalar == 0x061C || scalar == 0x200E || scalar == 0x200F || (scalar >= 0x202A && scalar <= 0x202E) ||
         (scalar >= 0x2066 && scalar <= 0x2069);
}

bool isLineSeparator(char32_t scalar) {
  return scalar == 0x2028 || scalar == 0x2029;
}

}  // namespace

std::string withoutControls(std::string_view text, std::size_t maxBytes) {
  std::string clean;
  std::size_t length = 0;
  for (std::size_t at = 0; at < text.size(); at += length) {
    const char32_t scalar = scalarAt(text, at, length);
    if (isControl(scalar) || isLineSeparator(scalar) || isDirectionControl(scalar)) continue;
    if (clean.size() + length > maxBytes) break;
    clean += text.substr(at, length);
  }
  return clean;
}

bool isWorkingDirectory(std::string_view path) {
  const auto isControlByte = [](char c) { return static_cast<unsigned char>(c) < 0x20 || c == 0x7F; };
  return path.starts_with('/') && path.size() <= TerminalState::maxPathBytes &&
         std::ranges::none_of(path, isControlByte);
}

TerminalState::TerminalState(const TerminalSize& given, TerminalSettings givenSettings)
    : settings(std::move(givenSettings)), screen(given, settings.history), prefersDark(settings.prefersDark) {
  setSize(given);
  screen.modes.graphemeClusters = settings.graphemeClusters;
}

void TerminalState::setSize(const TerminalSize& given) {
  screen.resize(given);
  size = {.rows = screen.rows(),
          .columns = screen.columns(),
          .pixelWidth = std::clamp(given.pixelWidth, 0, maxPixels),
          .pixelHeight = std::clamp(given.pixelHeight, 0, maxPixels)};
}

void TerminalState::reply(std::string_view text) {
  if (replies.size() + text.size() <= kMaxPendingReplies) replies += text;
}

CursorStyle TerminalState::shownCursor() const {
  CursorStyle style = cursorStyle.value_or(settings.cursor);
  style.blinks = style.blinks || modes.cursorBlinks;
  return style;
}

void TerminalState::resetSoft() {
  screen.softReset();
  modes.applicationCursor = false;
  modes.applicationKeypad = false;
  modes.keyboardLocked = false;
  modes.cursorVisible = true;
  rectanglesAreStreams = true;
}

void TerminalState::resetHard() {
  screen.reset();
  resetAllButScreen();
  title.clear();
  iconTitle.clear();
  events.titleChanged = true;
}

void TerminalState::startOver() {
  screen.startOver();
  resetAllButScreen();
}

void TerminalState::resetAllButScreen() {
  screen.modes.graphemeClusters = settings.graphemeClusters;
  modes = {};
  keyboard = {};
  palette.reset();
  events.paletteChanged = true;
  cursorStyle.reset();
  conformanceLevel = 64;
  rectanglesAreStreams = true;
  pushedTitles.clear();
  progress = {};
  pushedStyles.clear();
  pushedPalettes.clear();
  savedModes.clear();
}

}  // namespace zolt::vt
