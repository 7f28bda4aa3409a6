#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/TerminalSize.h"

namespace zolt {

/// A pane of a tab, or two parts or more, side by side or one above the other.
struct SavedPart {
  std::optional<std::size_t> pane{};  ///< its number in the tab
  bool isStacked = false;             ///< one above the other
  double share = 1;                   ///< of the parts that it stands among, above 0
  std::vector<SavedPart> parts{};

  friend bool operator==(const SavedPart&, const SavedPart&) = default;
};

struct SavedPane {
  std::string file{};  ///< the name of its terminal's file (TerminalFile) in the session's folder; empty: there is none
  std::string folder{};  ///< the working directory
  TerminalSize size{};
  double zoom = 0;  ///< logical pixels more than the size of the font

  friend bool operator==(const SavedPane&, const SavedPane&) = default;
};

struct SavedTab {
  std::string name{};              ///< that the user gave it; UTF-8
  std::vector<SavedPane> panes{};  ///< never empty
  SavedPart layout{};              ///< names every pane once
  std::size_t current = 0;         ///< pane
  bool isZoomed = false;           ///< the current pane alone is shown

  friend bool operator==(const SavedTab&, const SavedTab&) = default;
};

/// Lengths are logical pixels; the place is that of the window on the screen, without its frame.
struct SavedWindow {
  int x = 0;
  int y = 0;
  int width = 0;
  int height = 0;
  bool isMaximized = false;
  bool isFullScreen = false;
  std::vector<SavedTab> tabs{};  ///< never empty
  std::size_t current = 0;       ///< tab

  friend bool operator==(const SavedWindow&, const SavedWindow&) = default;
};

/// The windows of a session as they stood, from the first opened to the last.
struct SavedSession {
  std::int64_t time = 0;  ///< of saving, in seconds since 1970
  std::vector<SavedWindow> windows{};

  friend bool operator==(const SavedSession&, const SavedSession&) = default;
};

/// As bytes (JSON), and back. Nothing for bytes that are no session at all; what is wrong in one is put right: a window
/// without tabs is left out, and panes whose layout is wrong stand side by side.
std::string encodedSession(const SavedSession& session);
std::optional<SavedSession> decodedSession(std::string_view bytes);

/// The layout in which so many panes stand side by side.
SavedPart sideBySide(std::size_t panes);

}  // namespace zolt
