#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "vt/Keyboard.h"
#include "vt/Mouse.h"
#include "vt/Palette.h"
#include "vt/Screen.h"

namespace zolt::vt {

/// What a terminal lets programs do, and how it begins. Reading back is off: what a program is told it may show to
/// whoever made it ask.
struct TerminalSettings {
  HistorySettings history{};
  std::string version = "0";             ///< that XTVERSION tells
  bool allowTitleReports = false;        ///< CSI 20 t, CSI 21 t
  bool allowClipboardWrites = true;      ///< OSC 52 with a payload
  bool allowClipboardReads = false;      ///< OSC 52 with a question mark
  bool allowRectangleChecksums = false;  ///< DECRQCRA, by which the screen can be read
  bool graphemeClusters = false;         ///< mode 2027 from the beginning
  std::size_t rushBytes = 4096;  ///< of at least so much at once, lines that scroll off are not put on the screen
  bool prefersDark = true;       ///< the colour scheme that is told at first
};

enum class CursorShape : std::uint8_t { Block, Underline, Bar };

/// Modes that say what keys, the mouse and the window do. Those of the grid are ScreenModes.
struct TerminalModes {
  bool keyboardLocked = false;             ///< KAM
  bool applicationCursor = false;          ///< DECCKM
  bool applicationKeypad = false;          ///< DECNKM, DECKPAM
  bool smoothScroll = false;               ///< DECSCLM
  bool reverseScreen = false;              ///< DECSCNM
  bool autoRepeat = true;                  ///< DECARM
  bool cursorBlinks = false;               ///< what programs turn on beside DECSCUSR
  bool cursorVisible = true;               ///< DECTCEM
  bool allowColumnChange = false;          ///< before DECCOLM does anything
  bool columns132 = false;                 ///< DECCOLM
  bool keepsScreenOnColumnChange = false;  ///< DECNCSM
  bool backarrowIsBackspace = false;       ///< DECBKM
  bool numLockEndsKeypadMode = true;       ///< 1035
  MouseModes mouse;
  bool focusEvents = false;
  bool alternateScroll = true;
  bool metaSendsEscape = true;
  bool altSendsEscape = true;
  bool urgencyOnBell = false;
  bool raiseOnBell = false;
  bool bracketedPaste = false;
  bool synchronizedUpdate = false;
  bool colorSchemeReports = false;
  bool sizeReports = false;
};

/// What keys send beyond the modes: xterm's modifyKeys, and the progressive keyboard protocol's flags.
struct KeyboardState {
  static constexpr std::size_t maxPushed = 16;

  int modifyKeyboard = 0;
  int modifyCursorKeys = 2;
  int modifyFunctionKeys = 2;
  int modifyOtherKeys = 0;
  int formatOtherKeys = 0;
  /// By grid, primary and alternate: the flags in force, and those pushed below them.
  struct Flags {
    std::uint8_t current = 0;
    std::vector<std::uint8_t> pushed;
  };
  std::array<Flags, 2> flags;
};

/// A part of the system's clipboard, as OSC 52 names it.
enum class ClipboardTarget : std::uint8_t { Clipboard, Primary };

struct ClipboardWrite {
  ClipboardTarget target = ClipboardTarget::Clipboard;
  std::string text;  ///< decoded, at most 6 MiB; empty: the clipboard is to be emptied
};

struct Notification {
  std::string title;  ///< without controls
  std::string body;
};

/// What OSC 9;4 tells of a long job.
struct Progress {
  enum class Kind : std::uint8_t { None, Normal, Error, Indeterminate, Paused };
  Kind kind = Kind::None;
  int percent = 0;  ///< 0 to 100 (included)

  friend bool operator==(const Progress&, const Progress&) = default;
};

/// What came up that a window may act on, until it is taken. Bounded: what comes when there is no more room is dropped.
struct TerminalEvents {
  static constexpr std::size_t maxNotifications = 16;

  std::uint32_t bells = 0;
  std::vector<ClipboardWrite> clipboardWrites;  ///< the last one for each target
  std::vector<ClipboardTarget> clipboardReads;  ///< asked for, and allowed by the settings
  std::vector<Notification> notifications;
  bool titleChanged = false;
  bool paletteChanged = false;
};

using Milliseconds = std::chrono::milliseconds;

/// Everything that a terminal is, but for the parser before it: what control functions change. A value that the
/// functions in the tables work upon.
struct TerminalState {
  TerminalState(int rows, int columns, TerminalSettings settings);

  TerminalSettings settings;
  Screen screen;
  TerminalModes modes;
  KeyboardState keyboard;
  Palette palette;
  CursorShape cursorShape = CursorShape::Block;
  bool cursorShapeBlinks = true;
  int conformanceLevel = 64;         ///< DECSCL, which changes nothing else
  bool rectanglesAreStreams = true;  ///< DECSACE
  bool prefersDark = true;

  std::string title;
  std::string iconTitle;
  struct Titles {
    std::string title;
    std::string iconTitle;
  };
  std::vector<Titles> pushedTitles;  ///< XTWINOPS 22, 23
  std::string workingDirectory;      ///< OSC 7: an absolute path, or empty
  std::string workingDirectoryHost;
  Progress progress;
  std::vector<Style> pushedStyles;               ///< XTPUSHSGR
  std::vector<Palette> pushedPalettes;           ///< XTPUSHCOLORS
  std::vector<std::pair<int, bool>> savedModes;  ///< XTSAVE, by number

  int cellWidth = 0;  ///< pixels; 0 where they are not known
  int cellHeight = 0;
  Milliseconds now{0};          ///< of what is being fed
  Milliseconds updateBegan{0};  ///< where a synchronized update is going on

  TerminalEvents events;
  std::string replies;

  bool endedByBell = false;  ///< the command at hand: its answer ends in the same way

  /// Adds an answer for the program. It is made of constants and numbers of ours alone.
  void reply(std::string_view text);
  /// The end of an answer to an operating system command.
  std::string_view commandEnd() const { return endedByBell ? "\007" : "\033\\"; }
  KeyboardState::Flags& keyboardFlags() { return keyboard.flags[screen.showsAlternate() ? 1 : 0]; }
  const KeyboardState::Flags& keyboardFlags() const { return keyboard.flags[screen.showsAlternate() ? 1 : 0]; }
  void resetHard();  // RIS
  void resetSoft();  // DECSTR
};

/// `text` without control characters and what would hide in a line, at most `maxBytes` long and cut between
/// characters.
std::string withoutControls(std::string_view text, std::size_t maxBytes);

}  // namespace zolt::vt
