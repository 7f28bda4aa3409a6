#include <gtest/gtest.h>

#include "vt/Terminal.h"

namespace zolt::vt {
namespace {

std::vector<EndedCommand> endedAfter(Terminal& terminal, std::string_view output, int milliseconds) {
  terminal.feed(output, Milliseconds(milliseconds));
  return terminal.takeEvents().endedCommands;
}

TEST(EndedCommand, IsToldWithItsTimeAndStatus) {
  Terminal terminal({.rows = 4, .columns = 20});
  EXPECT_TRUE(endedAfter(terminal, "\033]133;A\033\\$ \033]133;B\033\\make\r\n\033]133;C\033\\", 1000).empty());
  EXPECT_EQ(endedAfter(terminal, "done\r\n\033]133;D;3\033\\", 13'500),
            (std::vector<EndedCommand>{{.took = Milliseconds(12'500), .exitStatus = 3}}));
}

TEST(EndedCommand, IsToldOnceAndOnlyIfItBegan) {
  Terminal terminal({.rows = 4, .columns = 20});
  EXPECT_TRUE(endedAfter(terminal, "\033]133;D;0\033\\", 1000).empty());
  EXPECT_EQ(endedAfter(terminal, "\033]133;C\033\\\033]133;D\033\\\033]133;D\033\\", 2000).size(), 1U);
}

TEST(EndedCommand, IsDroppedWhereNobodyTakesAsMany) {
  Terminal terminal({.rows = 4, .columns = 20});
  std::string output;
  for (std::size_t i = 0; i < 3 * TerminalEvents::maxNotifications; ++i) {
    output += "\033]133;C\033\\\033]133;D\033\\";
  }
  EXPECT_EQ(endedAfter(terminal, output, 1000).size(), TerminalEvents::maxNotifications);
}

}  // namespace
}  // namespace zolt::vt
