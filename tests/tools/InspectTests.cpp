#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>

#include "tools/Program.h"

namespace zolt {
namespace {

using Json = nlohmann::ordered_json;

std::vector<Json> inspect(const std::vector<std::string>& arguments, const std::string& input = {},
                          const std::map<std::string, std::string>& environment = {}) {
  const test::ProgramResult result = test::runProgram(ZOLT_INSPECT, arguments, input, environment);
  EXPECT_EQ(result.status, 0) << result.errors;
  std::vector<Json> lines;
  std::istringstream stream(result.output);
  for (std::string line; std::getline(stream, line);) {
    lines.push_back(Json::parse(line));
  }
  return lines;
}

std::vector<std::string> keysOf(const Json& object) {
  std::vector<std::string> keys;
  for (const auto& item : object.items()) {
    keys.push_back(item.key());
  }
  return keys;
}

TEST(InspectParse, PrintsARunALine) {
  const auto runs = inspect({"parse"}, "\x1B[1;31mx\x1B[0my");
  ASSERT_EQ(runs.size(), 2U);
  EXPECT_EQ(keysOf(runs[0]), (std::vector<std::string>{"text", "foreground", "background", "bold", "italic",
                                                       "underline", "strikethrough", "size"}));
  EXPECT_EQ(runs[0]["text"], "x");
  EXPECT_EQ(runs[0]["foreground"], Json({0.8, 0.0, 0.0, 1.0}));
  EXPECT_TRUE(runs[0]["background"].is_null());
  EXPECT_EQ(runs[0]["bold"], true);
  EXPECT_EQ(runs[0]["size"], 14);
  EXPECT_EQ(runs[1]["text"], "y");
  EXPECT_EQ(runs[1]["bold"], false);
}

TEST(InspectParse, PrintsEveryAttribute) {
  const auto runs = inspect({"parse"}, "\x1B[3;4;9;44mz");
  ASSERT_EQ(runs.size(), 1U);
  EXPECT_EQ(runs[0]["italic"], true);
  EXPECT_EQ(runs[0]["underline"], true);
  EXPECT_EQ(runs[0]["strikethrough"], true);
  EXPECT_EQ(runs[0]["background"], Json({0.0, 0.0, 0.8, 1.0}));
}

TEST(InspectParse, DecodesEachChunkOnItsOwn) {
  // Chunks of two bytes split a two-byte character: both chunks are invalid and dropped.
  EXPECT_TRUE(inspect({"parse", "--chunk", "2"},
                      "a\xC3\xA9"
                      "b")
                  .empty());
  const auto runs = inspect({"parse", "--chunk", "3"},
                            "a\xC3\xA9"
                            "b");
  ASSERT_EQ(runs.size(), 2U);
  EXPECT_EQ(runs[1]["text"], "b");
}

TEST(InspectGrid, PrintsTheGridTheCursorAndTheScrollback) {
  const auto grids = inspect({"grid", "24", "80"}, "a\r\nb");
  ASSERT_EQ(grids.size(), 1U);
  const Json& grid = grids[0];
  EXPECT_EQ(keysOf(grid), (std::vector<std::string>{"rows", "cols", "cursor", "scrollback", "cells"}));
  EXPECT_EQ(grid["rows"], 24);
  EXPECT_EQ(grid["cols"], 80);
  EXPECT_EQ(grid["cursor"], Json({0, 3}));
  EXPECT_EQ(grid["scrollback"], 0);
  EXPECT_EQ(grid["cells"].size(), 24U);
  EXPECT_EQ(grid["cells"][0].size(), 80U);
  EXPECT_EQ(grid["cells"][0][1], "\r\n") << "the pair is one character in one cell";
}

TEST(InspectParse, ReadsAnInputOfAnyLengthInChunks) {
  const auto runs = inspect({"parse", "--chunk=1000"}, std::string(2500, 'x'));
  ASSERT_EQ(runs.size(), 3U);
  EXPECT_EQ(runs[2]["text"], std::string(500, 'x'));
}

TEST(InspectParse, ReportsInputThatCannotBeRead) {
  const test::ProgramResult result = test::runProgram("/bin/sh", {"-c", std::string(ZOLT_INSPECT) + " parse < /"});
  EXPECT_EQ(result.status, 2);
  EXPECT_EQ(result.errors, "zolt-inspect: cannot read the input: Is a directory\n");
}

TEST(InspectGrid, CountsTheRowsThatScrolledAway) {
  const auto grids = inspect({"grid", "2", "4"}, "1\n2\n3\n4\n");
  EXPECT_EQ(grids[0]["scrollback"], 3);
  EXPECT_EQ(grids[0]["cells"][0][0], "4");
}

TEST(InspectShells, PrintsTheCatalogueInItsEncodedForm) {
  const auto values = inspect({"shells"});
  ASSERT_EQ(values.size(), 1U);
  const Json& list = values[0]["availableShells"];
  ASSERT_FALSE(list.empty());
  for (const Json& shell : list) {
    EXPECT_EQ(keysOf(shell), (std::vector<std::string>{"id", "name", "executable", "args", "icon"}));
  }
  EXPECT_TRUE(std::ranges::any_of(list, [](const Json& shell) { return shell["name"] == "Sh"; }));
  EXPECT_TRUE(values[0]["defaultShell"].contains("executable"));
}

std::vector<Json> defaultsOf(const std::string& content) {
  const QTemporaryDir folder;
  QDir(folder.path()).mkpath(QStringLiteral("zolt"));
  QFile file(folder.filePath(QStringLiteral("zolt/zolt.ini")));
  EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(QByteArray::fromStdString(content));
  file.close();
  return inspect({"defaults"}, {}, {{"XDG_CONFIG_HOME", folder.path().toStdString()}});
}

TEST(InspectDefaults, PrintsTheSettingsOfAFreshUserInTheirOrder) {
  const auto values = defaultsOf("");
  ASSERT_EQ(values.size(), 1U);
  EXPECT_EQ(values[0].dump(),
            R"({"theme":"Dark","fontSize":14.0,"fontFamily":"SF Mono","lineSpacing":1.2,"cursorStyle":"Block",)"
            R"("cursorBlink":false,"scrollbackLines":10000,"opacity":1.0,"blurBackground":false,"startupShell":"",)"
            R"("startupCommand":"","selectedTheme":"Dark"})");
}

TEST(InspectDefaults, PrintsWhatIsStored) {
  const auto values = defaultsOf("[General]\ntheme=Light\nfontSize=3.5\ncursorBlink=YES\nstartupShell=/bin/zsh\n");
  EXPECT_EQ(values[0]["theme"], "Light");
  EXPECT_EQ(values[0]["fontSize"], 3.5);
  EXPECT_EQ(values[0]["cursorBlink"], true);
  EXPECT_EQ(values[0]["startupShell"], "/bin/zsh");
}

TEST(Inspect, RejectsWrongArgumentsWithOneLineAndStatusTwo) {
  const std::vector<std::vector<std::string>> wrong{{},
                                                    {"nonsense"},
                                                    {"grid"},
                                                    {"grid", "0", "5"},
                                                    {"grid", "2", "x"},
                                                    {"grid", "10000", "10000"},
                                                    {"parse", "--chunk"},
                                                    {"parse", "--chunk", "0"},
                                                    {"parse", "--chunk", "1x"},
                                                    {"shells", "--chunk", "3"},
                                                    {"defaults", "extra"},
                                                    {"parse", "extra"}};
  for (const auto& arguments : wrong) {
    const test::ProgramResult result = test::runProgram(ZOLT_INSPECT, arguments);
    EXPECT_EQ(result.status, 2) << test::joined(arguments);
    EXPECT_EQ(std::ranges::count(result.errors, '\n'), 1) << result.errors;
    EXPECT_EQ(result.output, "");
  }
}

}  // namespace
}  // namespace zolt
