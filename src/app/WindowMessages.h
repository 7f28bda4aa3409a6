#pragma once

#include <optional>
#include <string>
#include <vector>

#include "app/AppDelegate.h"
#include "base/Result.h"
#include "messages/Answer.h"
#include "messages/Message.h"

namespace zolt {

/// Carries out scripts' messages on the windows of a delegate that are on screen. Main thread.
class WindowMessages {
 public:
  /// All must outlive the object.
  WindowMessages(AppDelegate& delegate, const Config& config, const UserDefaults& defaults)
      : m_delegate(delegate), m_config(config), m_defaults(defaults) {}

  /// The answer, a line with its newline.
  std::string answer(const Message& message);
  /// A tab in a folder, in the window that the user was in last; false if no window has tabs.
  bool addTab(const std::string& folder, const std::string& activationToken);

 private:
  /// A terminal, in a window of either display. `pane` is null in the log.
  struct Place {
    TerminalWindow* window = nullptr;
    TerminalController* terminal = nullptr;
    TerminalPane* pane = nullptr;
  };

  Result<std::string> newWindow(const Message& message);
  Result<std::string> newTab(const Message& message);
  Result<std::string> split(const Message& message);
  Result<std::string> sendText(const Message& message);
  Result<std::string> list(const Message& message);
  Result<std::string> focus(const Message& message);

  /// All terminals, in windows from the oldest to the newest.
  std::vector<Place> places() const;
  /// Whether the terminal has the keyboard of its window, or had it last.
  static bool isCurrent(const Place& place);
  static std::optional<Place> likeliest(const std::vector<Place>& places);
  /// The terminal that a message is for. If it names none: the one that has the keyboard, or else the current one of
  /// the newest window.
  Result<Place> placeFor(const Message& message) const;
  /// The same, among those of the full emulation.
  Result<Place> fullPlaceFor(const Message& message) const;
  Result<Place> placeNamed(const Message& message) const;

  AppDelegate& m_delegate;
  const Config& m_config;
  const UserDefaults& m_defaults;
};

}  // namespace zolt
