#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "vt/cells/Position.h"
#include "vt/input/Modifiers.h"

namespace zolt::vt {

/// Numbered as in the X Window System, where 4 to 7 are the wheel.
enum class MouseButton : std::uint8_t {
  None,
  Left,
  Middle,
  Right,
  WheelUp,
  WheelDown,
  WheelLeft,
  WheelRight,
  Back,  // 8
  Forward,
  Button10,
  Button11,
};

enum class MouseAction : std::uint8_t { Press, Release, Motion };

/// A pixel of the text area, from 0.
struct PixelPosition {
  int x = 0;
  int y = 0;

  friend bool operator==(const PixelPosition&, const PixelPosition&) = default;
};

/// A mouse event. Positions are relative to the upper left; negative ones count as 0.
struct MouseEvent {
  MouseButton button = MouseButton::None;  ///< pressed or released; ignored for motion
  MouseAction action = MouseAction::Press;
  Modifiers modifiers{};
  Position cell{};        ///< under the pointer
  PixelPosition pixel{};  ///< under the pointer
};

/// Which events are reported: modes 9, 1000, 1002 and 1003.
enum class MouseTracking : std::uint8_t {
  Off,
  X10,          ///< presses of the first three buttons, without modifiers
  Normal,       ///< presses and releases
  ButtonEvent,  ///< also motion while a button is held
  AnyEvent,     ///< also all other motion
};

/// How events are encoded: modes 1005, 1006, 1015 and 1016.
enum class MouseEncoding : std::uint8_t {
  Default,    ///< one byte per number; nothing is reported past 223 cells
  Utf8,       ///< one UTF-8 character per number; nothing is reported past 2015 cells
  Sgr,        ///< CSI < button ; column ; row M, or m for a release
  Urxvt,      ///< CSI button ; column ; row M
  SgrPixels,  ///< like Sgr, in pixels
};

struct MouseModes {
  MouseTracking tracking = MouseTracking::Off;
  MouseEncoding encoding = MouseEncoding::Default;

  friend bool operator==(const MouseModes&, const MouseModes&) = default;
};

/// The coordinates in a report, from 0: of the cell, or of the pixel in MouseEncoding::SgrPixels.
struct MouseCoordinates {
  int x = 0;
  int y = 0;

  friend bool operator==(const MouseCoordinates&, const MouseCoordinates&) = default;
};

/// Encodes mouse events for the program: XTerm Control Sequences, "Mouse Tracking". One thread at a time.
///
/// Must be given every event, even while the program does not track the mouse, to know which buttons are held when it
/// starts to.
class MouseReporter {
 public:
  /// The bytes to send for `event`; empty if the program does not want it, if the mouse has not moved since the last
  /// report, or if the position cannot be encoded. Not UTF-8 in MouseEncoding::Default. Motion with several buttons
  /// held is reported for the first of them in the order of MouseButton.
  std::string report(const MouseEvent& event, const MouseModes& modes);

  /// Forgets which buttons are held, because their release will be reported elsewhere.
  void releaseAll() { m_held = 0; }

 private:
  friend struct SavedFields;

  void trackButtons(const MouseEvent& event);
  bool isWanted(const MouseEvent& event, MouseTracking tracking) const;
  int buttonCode(const MouseEvent& event, const MouseModes& modes) const;

  std::uint16_t m_held = 0;  // one bit per MouseButton
  MouseModes m_modes;        // at the last event
  std::optional<MouseCoordinates> m_reportedAt;
};

/// The cursor keys that the wheel sends on the alternate screen if the program does not track the mouse (mode 1007): Up
/// for each step away from the user (`steps` > 0), Down for each step towards them, `kMaxScrollSteps` at most.
/// `applicationCursor` is DECCKM.
std::string alternateScroll(int steps, bool applicationCursor);

inline constexpr int kMaxScrollSteps = 1000;

}  // namespace zolt::vt
