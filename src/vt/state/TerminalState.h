#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/TerminalSize.h"
#include "vt/input/Mouse.h"
#include "vt/screen/Screen.h"
#include "vt/state/Palette.h"

namespace zolt::vt {

enum class CursorShape : std::uint8_t { Block, Underline, Bar };

struct CursorStyle {
  CursorShape shape = CursorShape::Block;
  bool blinks = true;

  friend bool operator==(const CursorStyle&, const CursorStyle&) = default;
};

/// What programs may do, and initial values. Reports of titles, the clipboard and the screen are off by default:
/// whoever controls a program's output could use them to read or to inject text.
struct TerminalSettings {
  HistorySettings history{};
  std::string version = "0";             ///< for XTVERSION
  bool allowTitleReports = false;        ///< CSI 20 t, CSI 21 t
  bool allowClipboardWrites = true;      ///< OSC 52 with a payload
  bool allowClipboardReads = false;      ///< OSC 52 with a question mark
  bool allowRectangleChecksums = false;  ///< DECRQCRA, which can be used to read the screen
  bool allowAlternateScreen = true;      ///< modes 47, 1047 and 1049
  bool allowWindowRequests = false;      ///< XTWINOPS that move or resize the window
  bool graphemeClusters = false;         ///< mode 2027, initially
  std::size_t bulkBytes = 4096;          ///< from this much input at once, the bulk path is tried
  bool prefersDark = true;               ///< the initial colour scheme
  CursorStyle cursor{};                  ///< the user's, until a program chooses another
};

/// The modes of the keyboard, the mouse and the window. Those of the screen are ScreenModes.
struct TerminalModes {
  bool keyboardLocked = false;             ///< KAM
  bool applicationCursor = false;          ///< DECCKM
  bool applicationKeypad = false;          ///< DECNKM, DECKPAM
  bool smoothScroll = false;               ///< DECSCLM
  bool reverseScreen = false;              ///< DECSCNM
  bool autoRepeat = true;                  ///< DECARM
  bool cursorBlinks = false;               ///< mode 12, whatever the style says
  bool cursorVisible = true;               ///< DECTCEM
  bool allowColumnChange = false;          ///< mode 40
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

/// How keys are encoded, apart from modes: xterm's key modifier options, and the flags of the kitty keyboard protocol.
struct KeyboardOptions {
  static constexpr std::size_t maxPushed = 16;

  int modifyKeyboard = 0;
  int modifyCursorKeys = 2;
  int modifyFunctionKeys = 2;
  int modifyOtherKeys = 0;
  int formatOtherKeys = 0;
  /// The current flags and the stack below them.
  struct Flags {
    std::uint8_t current = 0;
    std::vector<std::uint8_t> pushed;
  };
  std::array<Flags, 2> flags;  ///< of the primary and the alternate screen
};

using Milliseconds = std::chrono::milliseconds;

/// The selections that OSC 52 can name.
enum class ClipboardTarget : std::uint8_t { Clipboard, Primary };

struct ClipboardWrite {
  ClipboardTarget target = ClipboardTarget::Clipboard;
  std::string text;  ///< decoded, at most 6 MiB; empty to clear the clipboard
};

/// What a program wants of the window (XTWINOPS).
struct WindowRequest {
  enum class Kind : std::uint8_t {
    Restore,  ///< out of the task bar
    Minimize,
    MoveTo,          ///< x and y in pixels of the screen
    ResizeToPixels,  ///< height and width of the text area; 0: as it is
    ResizeToCells,   ///< rows and columns; 0: as it is
    Raise,
    Lower,
    LeaveMaximized,
    Maximize,
    LeaveFullScreen,
    EnterFullScreen,
    ToggleFullScreen,
  };
  Kind kind = Kind::Restore;
  int first = 0;  ///< not negative
  int second = 0;

  friend bool operator==(const WindowRequest&, const WindowRequest&) = default;
};

struct Notification {
  std::string title;  ///< without control characters
  std::string body;
};

/// A command that has ended by the marks of the shell (OSC 133 C and D).
struct EndedCommand {
  Milliseconds took{0};
  int exitStatus = 0;

  friend bool operator==(const EndedCommand&, const EndedCommand&) = default;
};

/// The progress of a task (OSC 9;4).
struct Progress {
  enum class Kind : std::uint8_t { None, Normal, Error, Indeterminate, Paused };
  Kind kind = Kind::None;
  int percent = 0;  ///< 0 to 100, inclusive

  friend bool operator==(const Progress&, const Progress&) = default;
};

/// Events for the window, until it takes them. Bounded: further events are dropped.
struct TerminalEvents {
  static constexpr std::size_t maxNotifications = 16;

  std::uint32_t bells = 0;
  std::vector<ClipboardWrite> clipboardWrites;  ///< the latest for each target
  std::vector<ClipboardTarget> clipboardReads;  ///< queries that the settings allow
  std::vector<Notification> notifications;
  std::vector<EndedCommand> endedCommands;
  std::vector<WindowRequest> windowRequests;  ///< if the settings allow them
  bool titleChanged = false;
  bool paletteChanged = false;
};

/// Everything in a terminal except its parser: what control functions act on. A value.
struct TerminalState {
  static constexpr std::size_t maxTitleBytes = 1024;
  static constexpr std::size_t maxPathBytes = 4096;
  static constexpr std::size_t maxHostBytes = 255;
  static constexpr std::size_t maxPushedTitles = 16;
  static constexpr std::size_t maxPushed = 10;  ///< styles, and palettes
  static constexpr int maxPixels = 10'000'000;  ///< of each side

  TerminalState(const TerminalSize& size, TerminalSettings settings);

  TerminalSettings settings;
  Screen screen;
  TerminalModes modes;
  KeyboardOptions keyboard;
  Palette palette;
  std::optional<CursorStyle> cursorStyle;  ///< that the program has chosen (DECSCUSR)
  int conformanceLevel = 64;               ///< DECSCL; nothing else depends on it
  bool rectanglesAreStreams = true;        ///< DECSACE
  bool prefersDark = true;

  std::string title;
  std::string iconTitle;
  struct Titles {
    std::string title;
    std::string iconTitle;
  };
  std::vector<Titles> pushedTitles;  ///< XTWINOPS 22, 23
  std::string workingDirectory;      ///< OSC 7: see isWorkingDirectory; empty: unknown
  std::string workingDirectoryHost;
  Progress progress;
  std::vector<Style> pushedStyles;               ///< XTPUSHSGR
  std::vector<Palette> pushedPalettes;           ///< XTPUSHCOLORS
  std::vector<std::pair<int, bool>> savedModes;  ///< XTSAVE, by number

  TerminalSize size;                         ///< as far as the screen's limits allow; pixels are 0 if unknown
  Milliseconds now{0};                       ///< when the current input was fed
  Milliseconds updateBegan{0};               ///< of the current synchronized update
  std::optional<Milliseconds> commandBegan;  ///< the one that the shell runs, by its marks

  TerminalEvents events;
  std::string replies;

  bool endedByBell = false;  ///< the current OSC; its reply is terminated like it

  /// Queues a reply to the program. Replies never contain text chosen by a program, unless a setting allows it.
  void reply(std::string_view text);
  /// The terminator for a reply to an OSC.
  std::string_view commandEnd() const { return endedByBell ? "\007" : "\033\\"; }
  /// The cursor as it is shown.
  CursorStyle shownCursor() const;
  KeyboardOptions::Flags& keyboardFlags() { return keyboard.flags[screen.showsAlternate() ? 1 : 0]; }
  const KeyboardOptions::Flags& keyboardFlags() const { return keyboard.flags[screen.showsAlternate() ? 1 : 0]; }
  /// Resizes the screen. Clamped to its limits.
  void setSize(const TerminalSize& given);
  void resetHard();  // RIS
  /// As at the start, but for the text, the titles, the working directory and the theme.
  void startOver();
  void resetSoft();  // DECSTR

 private:
  void resetAllButScreen();
};

/// `text` without control, line separator and bidirectional formatting characters, truncated between characters to
/// `maxBytes`.
std::string withoutControls(std::string_view text, std::size_t maxBytes);

/// Whether a program may name this as its working directory: an absolute path of at most `maxPathBytes`, without
/// control characters, which could attack whatever displays it. Any bytes otherwise.
bool isWorkingDirectory(std::string_view path);

}  // namespace zolt::vt
