#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/MainQueue.h"
#include "session/PTYSession.h"
#include "support/WaitFor.h"

namespace zolt::test {

/// The helper program in one of its modes, as a shell.
inline Shell program(std::vector<std::string> args) {
  return Shell{.name = "Test", .executable = ZOLT_TEST_CHILD, .args = std::move(args), .icon = "terminal"};
}

/// A shell that runs `text` with sh and ends.
inline Shell script(std::string text) {
  return Shell{.name = "Script", .executable = "/bin/sh", .args = {"-c", std::move(text)}, .icon = "terminal"};
}

inline Shell missingShell() {
  return Shell{.name = "Missing", .executable = "/nonexistent/shell", .args = {}, .icon = "terminal"};
}

/// A session that keeps what it delivers, as text and without the carriage returns that the terminal adds.
class SessionProbe {
 public:
  SessionProbe() {
    session.onOutput = [this](const Bytes& chunk) {
      std::ranges::copy_if(chunk.view(), std::back_inserter(output), [](char each) { return each != '\r'; });
    };
    session.onExit = [this](std::int32_t status) { exits.push_back(status); };
  }

  PTYSession session;
  std::string output;
  std::vector<std::int32_t> exits;

  bool shows(std::string_view text) const {
    return waitFor([&] { return output.find(text) != std::string::npos; });
  }
  /// Whether the shell, all in all, has ended `times` times.
  bool ends(std::size_t times = 1) const {
    return waitFor([&] { return exits.size() >= times; });
  }
  /// Runs the loop until everything has run that is in the main queue now.
  static bool deliversWhatWasSubmitted() {
    auto reached = std::make_shared<bool>(false);
    MainQueue::async([reached] { *reached = true; });
    return waitFor([&] { return *reached; });
  }
  /// All that a shell prints until it ends.
  std::string outputOf(const Shell& shell) {
    output.clear();
    const std::size_t before = exits.size();
    EXPECT_TRUE(session.start(shell));
    EXPECT_TRUE(ends(before + 1));
    EXPECT_TRUE(waitFor([this] { return session.isDrained(); }));
    EXPECT_TRUE(deliversWhatWasSubmitted());
    return output;
  }
};

}  // namespace zolt::test
