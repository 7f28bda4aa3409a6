#include <gtest/gtest.h>

#include <nlohmann/json.hpp>

#include "tools/Program.h"

namespace zolt {
namespace {

using Json = nlohmann::ordered_json;

Json inspect(const std::vector<std::string>& arguments, const std::string& input = {}, int status = 0) {
  const test::ProgramResult result = test::runProgram(ZOLT_INSPECT, arguments, input);
  EXPECT_EQ(result.status, status) << result.errors;
  return Json::parse(result.output, nullptr, false);
}

std::vector<std::string> keysOf(const Json& object) {
  std::vector<std::string> keys;
  for (const auto& item : object.items()) {
    keys.push_back(item.key());
  }
  return keys;
}

TEST(InspectVt, PrintsTheScreenTheCursorTheModesAndTheReplies) {
  const Json told =
      inspect({"vt", "3", "20"}, "\033]2;a title\aone \033[31mtwo\033[0m\r\n\u4E2D\033[?1h\033[6n\033[4h");
  EXPECT_EQ(keysOf(told), (std::vector<std::string>{"rows", "cols", "cursor", "title", "modes", "replies", "screen"}));
  EXPECT_EQ(told["rows"], 3);
  EXPECT_EQ(told["cols"], 20);
  EXPECT_EQ(told["cursor"], Json({1, 2}));
  EXPECT_EQ(told["title"], "a title");
  EXPECT_EQ(told["replies"], "G1syOzNS") << "CSI 2;3 R in base 64";
  EXPECT_EQ(told["screen"], Json({"one two", "\u4E2D", ""}));
  const auto has = [&](const char* mode) { return std::ranges::find(told["modes"], mode) != told["modes"].end(); };
  EXPECT_TRUE(has("?1"));
  EXPECT_TRUE(has("4"));
  EXPECT_FALSE(has("?1049"));
}

TEST(InspectVt, ShowsTheSameInChunksOfAnySize) {
  const std::string input = "\033[1mbold\033[0m \u4E2D\U0001F468\u200D\U0001F469\r\n\xC3";
  const Json whole = inspect({"vt", "4", "10", "--full"}, input);
  for (const char* size : {"1", "2", "5"}) {
    EXPECT_EQ(inspect({"vt", "4", "10", "--full", "--chunk", size}, input), whole) << size;
  }
}

TEST(InspectVt, PrintsStylesLinksMarksAndScrollbackInFull) {
  const Json told = inspect(
      {"vt", "2", "20", "--full"},
      "old \033[1mline\033[0m\r\n\033]133;A\a$ \033]8;id=x;http://a.b/\033\\link\033]8;;\033\\\r\n\033]133;D;7\aend");
  EXPECT_EQ(told["scrollback"],
            Json::parse(R"([{"text":"old line","runs":[{"text":"old ","sgr":"0"},{"text":"line","sgr":"0;1"}]}])"));
  EXPECT_EQ(told["styled"][0]["runs"][1],
            Json::parse(R"({"text":"link","sgr":"0","link":"http://a.b/","linkId":"x"})"));
  EXPECT_EQ(told["styled"][0]["marks"], Json::parse(R"([{"kind":"prompt","at":0}])"));
  EXPECT_EQ(told["styled"][1]["marks"], Json::parse(R"([{"kind":"end","at":0,"status":7}])"));
  EXPECT_EQ(told["alternate"], false);
}

TEST(InspectVt, RejectsAnInvalidSize) {
  for (const auto& arguments :
       {std::vector<std::string>{"vt"}, {"vt", "0", "80"}, {"vt", "24", "x"}, {"vt", "10000", "10000"}}) {
    const test::ProgramResult result = test::runProgram(ZOLT_INSPECT, arguments);
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.errors, "zolt-inspect: vt needs ROWS and COLS, each from 1 to 10000, 4000000 cells at most\n");
  }
}

TEST(InspectHost, RunsAProgramOnATerminalOfTheSizeAndEndsWithItsStatus) {
  const Json told =
      inspect({"host", "7", "33", "--", "sh", "-c", "stty size; test -t 0 && echo terminal; exit 9"}, {}, 9);
  EXPECT_EQ(told["screen"][0], "7 33");
  EXPECT_EQ(told["screen"][1], "terminal");
  EXPECT_EQ(inspect({"host", "3", "10", "--", "sh", "-c", "kill -KILL $$"}, {}, 137)["rows"], 3);
}

TEST(InspectHost, AnswersTheProgramsQuestions) {
  // The program reads the reply byte by byte; without one it would wait forever.
  const char* script =
      "stty raw -echo; printf '\\033[5;7H\\033[6n'; dd bs=1 count=6 2>/dev/null | od -An -c | tr -d ' \\n'";
  const Json told = inspect({"host", "8", "40", "--", "sh", "-c", script});
  EXPECT_EQ(told["screen"][4], "      033[5;7R");
  EXPECT_EQ(told["replies"], "G1s1OzdS");
}

TEST(InspectHost, PassesItsInputToTheProgram) {
  const Json told = inspect({"host", "4", "20", "--", "sh", "-c", "read line; echo got $line"}, "typed\n");
  EXPECT_EQ(told["screen"], Json({"typed", "got typed", "", ""}));
}

TEST(InspectHost, ReportsChecksumsOfTheScreenOnlyWithTheOption) {
  // The second request is always answered. Its answer ends with n, and the answer to the first comes before it, if any.
  const char* script =
      "stty raw -echo; printf 'AB\\033[1;1;1;1;1;2*y\\033[5n'; until [ \"$(dd bs=1 count=1 2>/dev/null)\" = n ]; do :; "
      "done";
  const std::vector<std::string> program{"sh", "-c", script};
  std::vector<std::string> arguments{"host", "3", "20", "--"};
  arguments.insert(arguments.end(), program.begin(), program.end());
  EXPECT_EQ(inspect(arguments)["replies"], "G1swbg==");
  arguments.insert(arguments.begin() + 3, "--rectangle-checksums");
  EXPECT_EQ(inspect(arguments)["replies"], "G1AxIX5GRjdEG1wbWzBu") << "DCS 1!~FF7D ST, CSI 0 n";
}

// More replies than a pseudo-terminal can hold, for a program that ends without reading them.
TEST(InspectHost, EndsWithAProgramThatNeverReadsTheReplies) {
  const char* script = "stty raw -echo; i=0; while [ $i -lt 3000 ]; do printf '\\033[c'; i=$((i+1)); done; exit 4";
  EXPECT_EQ(inspect({"host", "3", "20", "--", "sh", "-c", script}, {}, 4)["rows"], 3);
}

TEST(InspectHost, ReportsWhatItCannotRun) {
  const test::ProgramResult missing = test::runProgram(ZOLT_INSPECT, {"host", "3", "10", "--", "no-such-program"});
  EXPECT_EQ(missing.status, 2);
  EXPECT_EQ(missing.errors, "zolt-inspect: no such program: no-such-program\n");
  const test::ProgramResult none = test::runProgram(ZOLT_INSPECT, {"host", "3", "10"});
  EXPECT_EQ(none.errors, "zolt-inspect: host needs a program behind --\n");
}

}  // namespace
}  // namespace zolt
