#include "vt/input/Mouse.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdlib>

#include "vt/input/InputText.h"

namespace zolt::vt {

namespace {

constexpr int kReleaseCode = 3;  // also means no button
constexpr int kMotionCode = 32;
constexpr int kCharacterOffset = 32;  // keeps characters out of the control range
constexpr int kMaxByte = 255;
constexpr int kMaxTwoByteCharacter = 2047;

// By MouseButton.
constexpr int kButtonCodes[] = {kReleaseCode, 0, 1, 2, 64, 65, 66, 67, 128, 129, 130, 131};

constexpr std::uint16_t bit(MouseButton button) {
  return static_cast<std::uint16_t>(1U << static_cast<unsigned>(button));
}

bool isWheel(MouseButton button) {
  return button >= MouseButton::WheelUp && button <= MouseButton::WheelRight;
}

int modifierCode(Modifiers held) {
  constexpr int shift = 4, meta = 8, control = 16;
  return (held.hasAny(Modifier::Shift) ? shift : 0) + (held.hasAny(Modifier::Alt | Modifier::Meta) ? meta : 0) +
         (held.hasAny(Modifier::Control) ? control : 0);
}

bool distinguishesReleases(MouseEncoding encoding) {
  return encoding == MouseEncoding::Sgr || encoding == MouseEncoding::SgrPixels;
}

MouseCoordinates coordinatesOf(const MouseEvent& event, MouseEncoding encoding) {
  if (encoding == MouseEncoding::SgrPixels) return {.x = std::max(0, event.pixel.x), .y = std::max(0, event.pixel.y)};
  return {.x = std::max(0, event.cell.column), .y = std::max(0, event.cell.row)};
}

// CSI M and three characters, if none exceeds `max`.
std::string inCharacters(int code, MouseCoordinates at, int max, bool utf8) {
  if (std::max(at.x, at.y) > max - kCharacterOffset - 1) return {};
  std::string report = "\x1B[M";
  for (const int number : {code, at.x + 1, at.y + 1}) {
    const auto character = static_cast<char32_t>(number + kCharacterOffset);
    if (utf8) {
      appendUtf8(report, character);
    } else {
      report.push_back(static_cast<char>(character));
    }
  }
  return report;
}

std::string inNumbers(const char* introducer, int code, MouseCoordinates at, char final) {
  return introducer + std::to_string(code) + ";" + std::to_string(std::int64_t{at.x} + 1) + ";" +
         std::to_string(std::int64_t{at.y} + 1) + final;
}

std::string encode(int code, MouseCoordinates at, bool isRelease, MouseEncoding encoding) {
  switch (encoding) {
    case MouseEncoding::Default:
      return inCharacters(code, at, kMaxByte, false);
    case MouseEncoding::Utf8:
      return inCharacters(code, at, kMaxTwoByteCharacter, true);
    case MouseEncoding::Urxvt:
      return inNumbers("\x1B[", code + kCharacterOffset, at, 'M');
    case MouseEncoding::Sgr:
    case MouseEncoding::SgrPixels:
      break;
  }
  return inNumbers("\x1B[<", code, at, isRelease ? 'm' : 'M');
}

}  // namespace

void MouseReporter::trackButtons(const MouseEvent& event) {
  if (event.button == MouseButton::None || isWheel(event.button)) return;
  if (event.action == MouseAction::Press) m_held |= bit(event.button);
  if (event.action == MouseAction::Release) m_held &= static_cast<std::uint16_t>(~bit(event.button));
}

bool MouseReporter::isWanted(const MouseEvent& event, MouseTracking tracking) const {
  if (tracking == MouseTracking::Off) return false;
  if (event.action == MouseAction::Motion) {
    return tracking == MouseTracking::AnyEvent || (tracking == MouseTracking::ButtonEvent && m_held != 0);
  }
  if (event.button == MouseButton::None) return false;
  const bool isPress = event.action == MouseAction::Press;
  if (tracking == MouseTracking::X10) return isPress && event.button <= MouseButton::Right;
  return isPress || !isWheel(event.button);
}

int MouseReporter::buttonCode(const MouseEvent& event, const MouseModes& modes) const {
  MouseButton button = event.button;
  if (event.action == MouseAction::Motion) {
    button = m_held == 0 ? MouseButton::None : static_cast<MouseButton>(std::countr_zero(m_held));
  }
  const bool isBareRelease = event.action == MouseAction::Release && !distinguishesReleases(modes.encoding);
  const int code = isBareRelease ? kReleaseCode : kButtonCodes[static_cast<std::size_t>(button)];
  const int motion = event.action == MouseAction::Motion ? kMotionCode : 0;
  return code + motion + (modes.tracking == MouseTracking::X10 ? 0 : modifierCode(event.modifiers));
}

std::string MouseReporter::report(const MouseEvent& event, const MouseModes& modes) {
  trackButtons(event);
  // A change of modes starts over: nothing has been reported under the new ones.
  if (modes != m_modes) m_reportedAt.reset();
  m_modes = modes;
  if (!isWanted(event, modes.tracking)) return {};

  const MouseCoordinates at = coordinatesOf(event, modes.encoding);
  if (event.action == MouseAction::Motion && at == m_reportedAt) return {};
  m_reportedAt = at;
  return encode(buttonCode(event, modes), at, event.action == MouseAction::Release, modes.encoding);
}

std::string alternateScroll(int steps, bool applicationCursor) {
  const std::int64_t count = std::min<std::int64_t>(std::abs(std::int64_t{steps}), kMaxScrollSteps);
  const std::string key = std::string(applicationCursor ? "\x1BO" : "\x1B[") + (steps > 0 ? 'A' : 'B');
  std::string keys;
  for (std::int64_t i = 0; i < count; ++i) {
    keys += key;
  }
  return keys;
}

}  // namespace zolt::vt
