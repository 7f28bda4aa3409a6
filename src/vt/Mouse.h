#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "vt/Modifiers.h"

namespace zolt::vt {

/// The numbers Back to Button11 are those of the X window system, where 4 to 7 are the wheel's.
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

/// What the mouse did. Positions count from the upper left; a negative one is taken as 0.
struct MouseEvent {
  MouseButton button = MouseButton::None;  ///< of a press or a release; a motion's is not looked at
  MouseAction action = MouseAction::Press;
  Modifiers modifiers{};
  int row = 0;     ///< in cells, from 0
  int column = 0;  ///< in cells, from 0
  int x = 0;       ///< in pixels, from 0
  int y = 0;       ///< in pixels, from 0
};

/// Which events the program wants: private modes 9, 1000, 1002 and 1003.
enum class MouseTracking : std::uint8_t {
  Off,
  X10,          ///< presses of the first three buttons, without modifiers
  Normal,       ///< presses and releases
  ButtonEvent,  ///< and motion while a button is held
  AnyEvent,     ///< and all motion
};

/// How they are told: private modes 1005, 1006, 1015 and 1016.
enum class MouseEncoding : std::uint8_t {
  Default,    ///< a byte for each number; what is beyond 223 cells is not told
  Utf8,       ///< a character for each number; what is beyond 2015 cells is not told
  Sgr,        ///< CSI < button ; column ; row M, or m for a release
  Urxvt,      ///< CSI button ; column ; row M
  SgrPixels,  ///< as Sgr, in pixels
};

struct MouseModes {
  MouseTracking tracking = MouseTracking::Off;
  MouseEncoding encoding = MouseEncoding::Default;

  friend bool operator==(const MouseModes&, const MouseModes&) = default;
};

/// Tells a program of the mouse: XTerm Control Sequences, "Mouse Tracking". One thread at a time.
///
/// Give it every event, whether or not the program tracks the mouse: so it knows what is held when tracking begins.
class MouseReporter {
 public:
  /// The bytes that tell of `event`; none where the program does not want it, has been told, or could not be told in
  /// its encoding. In MouseEncoding::Default they are not UTF-8. A motion with several buttons held is told with the
  /// first of them in the order of MouseButton.
  std::string report(const MouseEvent& event, const MouseModes& modes);

  /// Forgets which buttons are held, for when their release will be told to somebody else.
  void releaseAll() { m_held = 0; }

 private:
  struct Position {
    int column;
    int row;
    friend bool operator==(const Position&, const Position&) = default;
  };

  void note(const MouseEvent& event);
  bool isWanted(const MouseEvent& event, MouseTracking tracking) const;
  int buttonCode(const MouseEvent& event, const MouseModes& modes) const;

  std::uint16_t m_held = 0;          // a bit for each MouseButton
  MouseModes m_modes;                // of the last event
  std::optional<Position> m_toldAt;  // in the unit of the encoding
};

/// The cursor keys that steps of the wheel are to a program on the alternate screen that does not track the mouse
/// (private mode 1007): Up for each step away from the user (`steps` > 0), Down for each towards them. At most
/// `kMaxScrollSteps` are sent. `applicationCursor` is DECCKM.
std::string alternateScroll(int steps, bool applicationCursor);

inline constexpr int kMaxScrollSteps = 1000;

}  // namespace zolt::vt
