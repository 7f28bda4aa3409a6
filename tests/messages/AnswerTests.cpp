#include "messages/Answer.h"

#include <gtest/gtest.h>

namespace zolt {
namespace {

TEST(Answer, IsOneLineThatSaysFirstWhetherItWasDone) {
  EXPECT_EQ(answerDone(), "{\"ok\":true}\n");
  EXPECT_EQ(answerRefused("there is no \"a\"\n"), "{\"ok\":false,\"error\":\"there is no \\\"a\\\"\\n\"}\n");
  EXPECT_EQ(answerOpened({.window = "w", .terminal = "t", .token = "s"}),
            "{\"ok\":true,\"window\":\"w\",\"terminal\":\"t\",\"token\":\"s\"}\n");
}

TEST(Answer, ListsWindowsTabsAndTerminals) {
  EXPECT_EQ(answerListed({}), "{\"ok\":true,\"windows\":[]}\n");
  const ListedTerminal idle{
      .id = "1", .title = "sh", .folder = "/", .rows = 24, .columns = 80, .isFocused = true, .program = {}};
  ListedTerminal busy = idle;
  busy.isFocused = false;
  busy.program = "vim";
  EXPECT_EQ(
      answerListed({{.id = "w",
                     .title = "T",
                     .display = "full",
                     .isFocused = true,
                     .tabs = {{.title = "tab", .isCurrent = true, .terminals = {idle, busy}}}}}),
      "{\"ok\":true,\"windows\":[{\"id\":\"w\",\"title\":\"T\",\"display\":\"full\",\"focused\":true,\"tabs\":["
      "{\"title\":\"tab\",\"current\":true,\"terminals\":["
      "{\"id\":\"1\",\"title\":\"sh\",\"folder\":\"/\",\"rows\":24,\"columns\":80,\"focused\":true,\"program\":null},"
      "{\"id\":\"1\",\"title\":\"sh\",\"folder\":\"/\",\"rows\":24,\"columns\":80,\"focused\":false,"
      "\"program\":\"vim\"}]}]}]}\n");
}

// Titles come from programs, and whoever reads the answer may do so in a terminal.
TEST(Answer, HoldsNoControlFunctionsAndNoOtherDirection) {
  const std::string answer = answerRefused("\x1B[2J\x7F\xC2\x9B\xE2\x80\xAE\xFF");
  EXPECT_EQ(answer, "{\"ok\":false,\"error\":\"\\u001b[2J\\u007f\\u009b\\u202e\\ufffd\"}\n");
}

TEST(Answer, IsUnderstoodByWhoeverAsked) {
  EXPECT_EQ(isDone(answerDone()), true);
  EXPECT_EQ(isDone(answerRefused("no")), false);
  for (const char* line : {"", "opened\n", "[]", "{}", "{\"ok\":1}", "{\"ok\":null}"}) {
    EXPECT_EQ(isDone(line), std::nullopt) << line;
  }
}

}  // namespace
}  // namespace zolt
