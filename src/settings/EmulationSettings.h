#pragma once

#include <QtGlobal>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <variant>

#include "platform/UserDefaults.h"
#include "settings/Config.h"

namespace zolt {

/// Whether windows show the full emulation; absent: the log display.
inline constexpr const char* kFullEmulationKey = "fullEmulation";
/// Whether the user was told of the two displays and has chosen one.
inline constexpr const char* kDisplayChosenKey = "displayChosen";

/// Whether Alt is Meta for those who never chose: on a Mac Option types characters, elsewhere Alt with a letter types
/// none, and shells and editors count on it.
#ifdef Q_OS_MACOS
inline constexpr bool kAltIsUsuallyMeta = false;
#else
inline constexpr bool kAltIsUsuallyMeta = true;
#endif

/// Everything that can be set about the full emulation, each value in its range. The initial values are the defaults.
struct EmulationSettings {
  // From the store of the appearance settings, saved or not.
  std::string fontFamily = "SF Mono";  ///< may be empty, or name a font that is not installed
  double fontSize = 14.0;              ///< logical pixels, 4...288
  Config::ColorScheme colorScheme = Config::ColorScheme::Dark;
  Config::CursorStyle cursorStyle = Config::CursorStyle::Block;
  bool cursorBlink = true;
  double opacity = 1.0;  ///< of the background, 0.1...1
  bool blurBackground = false;
  /// At least 1; none: without limit. Any number below 1 means that. The preferences store -1 for it, because a stored
  /// 0 loads as the default number.
  std::optional<std::int64_t> scrollbackLines = 10000;

  // Stored under a key of their own.
  double lineSpacing = 1.2;    ///< of the font's own, 0.8...3; none stored: that of the appearance settings
  std::string startupShell;    ///< the path of an executable; empty: the catalogue's default
  std::string startupCommand;  ///< empty: none
  bool closeWindowWhenShellExits = true;
  bool warnBeforeClosing = true;
  bool restorePreviousSession = true;
  bool optionSendsMeta = kAltIsUsuallyMeta;
  bool commandActsAsMeta = false;
  bool useAlternateScreenBuffer = true;
  bool enableMouseReporting = true;
  bool ligatures = true;
  double minimumContrast = 4.5;                          ///< of text with its background, 1...7; 1: no minimum
  std::string wordSeparators = "()[]{}<>\"'`,;|\u2502";  ///< besides blanks, which always separate words
  bool askBeforeRiskyPaste = true;                       ///< of several lines, or with control characters
  bool shellIntegration = true;                          ///< shells mark their prompts and tell their folder
  bool dimUnfocusedPanes = true;
  bool alwaysShowTabs = false;       ///< the strip, for one tab too
  double reopenSeconds = 60;         ///< in which what was closed can be brought back, 10...600
  bool allowWindowRequests = false;  ///< programs may move and resize the window
  bool messagesMayType = false;      ///< scripts, into terminals that they did not open
  bool boldIsBright = false;
  bool audibleBell = true;
  bool visualBell = false;
  bool desktopNotifications = true;  ///< of programs, and of long commands, in a window nobody looks at

  friend bool operator==(const EmulationSettings&, const EmulationSettings&) = default;
};

/// A setting that is stored under a key of its own as soon as it is edited.
struct EmulationRow {
  using Member = std::variant<bool EmulationSettings::*, double EmulationSettings::*, std::string EmulationSettings::*>;

  const char* key;
  Member member;             ///< its initial value stands in for an absent one
  bool isReset = true;       ///< by the reset to defaults
  Config::Range range = {};  ///< of a number
};
std::span<const EmulationRow> emulationRows();
/// The row of a setting that has one.
const EmulationRow& rowOf(EmulationRow::Member member);

/// The settings as they are now. A number out of range is clamped; a value of the wrong type counts as absent. What is
/// stored stays as it is.
EmulationSettings emulationSettings(const Config& config, const UserDefaults& defaults);

/// Whether a scheme is dark on a desktop that is dark or light.
constexpr bool isDark(Config::ColorScheme scheme, bool desktopIsDark) {
  return scheme == Config::ColorScheme::System ? desktopIsDark : scheme == Config::ColorScheme::Dark;
}

}  // namespace zolt
