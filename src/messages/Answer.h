#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zolt {

/// What `list` tells. IDs are the same for as long as the terminal or window lives.
struct ListedTerminal {
  std::string id;
  std::string title;
  std::string folder;  ///< empty if it cannot be told
  int rows = 0;
  int columns = 0;
  bool isFocused = false;              ///< the keyboard is there now
  std::optional<std::string> program;  ///< that runs in the foreground of the shell; empty if its name is unknown
};
struct ListedTab {
  std::string title;
  bool isCurrent = false;  ///< in view in its window
  std::vector<ListedTerminal> terminals;
};
struct ListedWindow {
  std::string id;
  std::string title;
  std::string display;  ///< "log" or "full"
  bool isFocused = false;
  std::vector<ListedTab> tabs;
};

/// The terminal that a verb has opened, and what allows its opener to type into it.
struct OpenedTerminal {
  std::string window;
  std::string terminal;
  std::string token;
};

/// Answers: one line of JSON each, with its newline and in ASCII. An object whose "ok" says whether the request was
/// carried out; "error" is the reason if it was not.
std::string answerDone();
std::string answerRefused(std::string_view reason);
std::string answerOpened(const OpenedTerminal& opened);
std::string answerListed(const std::vector<ListedWindow>& windows);

/// Whether the answer says that the request was carried out; none if the line is no answer.
std::optional<bool> isDone(std::string_view answer);

}  // namespace zolt
