#include "app/CommandLine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zolt {
namespace {

using Arguments = std::vector<std::string>;
using Action = CommandLine::Action;

// The result of parsing valid arguments.
CommandLine parsed(const Arguments& arguments) {
  const auto line = CommandLine::parse(arguments);
  EXPECT_TRUE(line) << line.reason();
  return line ? line.value() : CommandLine{};
}

// The error for invalid arguments; empty if they are valid.
std::string refusal(const Arguments& arguments) {
  const auto line = CommandLine::parse(arguments);
  return line ? "" : line.reason();
}

TEST(CommandLine, RunsTheShellWithoutArguments) {
  const CommandLine line = parsed({});
  EXPECT_EQ(line.action, Action::Run);
  EXPECT_TRUE(line.program.empty());
  EXPECT_FALSE(line.workingDirectory);
  EXPECT_FALSE(line.screenshotFile);
}

TEST(CommandLine, TakesAProgram) {
  EXPECT_EQ(parsed({"-e", "top"}).program, Arguments{"top"});
}

TEST(CommandLine, TakesEverythingAfterTheProgramForItsArguments) {
  const Arguments program{"ls", "--help", "-e", "--screenshot=x", "", "--"};
  Arguments arguments{"--working-directory", "/tmp", "-e"};
  arguments.insert(arguments.end(), program.begin(), program.end());
  const CommandLine line = parsed(arguments);
  EXPECT_EQ(line.program, program);
  EXPECT_EQ(line.action, Action::Run);
  EXPECT_FALSE(line.screenshotFile);
  EXPECT_EQ(line.workingDirectory, "/tmp");
}

TEST(CommandLine, NeedsAProgramAfterDashE) {
  EXPECT_EQ(refusal({"-e"}), "-e needs a value: PROGRAM [ARG...]");
  EXPECT_EQ(refusal({"-e", ""}), "-e needs a value: PROGRAM [ARG...]");
}

TEST(CommandLine, TakesAWorkingDirectoryInBothForms) {
  EXPECT_EQ(parsed({"--working-directory", "/a b"}).workingDirectory, "/a b");
  EXPECT_EQ(parsed({"--working-directory=/a=b"}).workingDirectory, "/a=b");
}

TEST(CommandLine, TakesAScreenshotFileInBothForms) {
  EXPECT_EQ(parsed({"--screenshot", "a.png", "-e", "true"}).screenshotFile, "a.png");
  EXPECT_EQ(parsed({"--screenshot=a.png", "-e", "true"}).screenshotFile, "a.png");
}

TEST(CommandLine, NeedsAProgramForAScreenshot) {
  EXPECT_EQ(refusal({"--screenshot", "a.png"}), "--screenshot needs -e PROGRAM");
}

TEST(CommandLine, NeedsAValueWhereAnOptionTakesOne) {
  EXPECT_EQ(refusal({"--working-directory"}), "--working-directory needs a value: DIR");
  EXPECT_EQ(refusal({"--working-directory="}), "--working-directory needs a value: DIR");
  EXPECT_EQ(refusal({"--working-directory", ""}), "--working-directory needs a value: DIR");
  EXPECT_EQ(refusal({"--screenshot"}), "--screenshot needs a value: FILE");
}

TEST(CommandLine, TakesTheNextArgumentForTheValueWhateverItLooksLike) {
  EXPECT_EQ(parsed({"--working-directory", "--help"}).workingDirectory, "--help");
}

TEST(CommandLine, LetsTheLastOfARepeatedOptionCount) {
  EXPECT_EQ(parsed({"--working-directory=/a", "--working-directory=/b"}).workingDirectory, "/b");
}

TEST(CommandLine, RefusesAValueForAnOptionThatTakesNone) {
  for (const char* name : {"--help", "--version", "--log", "--full-emulation", "--new-instance"}) {
    EXPECT_EQ(refusal({std::string(name) + "=yes"}), std::string(name) + " takes no value");
  }
}

TEST(CommandLine, NamesTheUnknownOptionThatItRejects) {
  EXPECT_EQ(refusal({"--nonsense"}), "unknown option: --nonsense");
  EXPECT_EQ(refusal({"--nonsense=5"}), "unknown option: --nonsense");
  EXPECT_EQ(refusal({"file"}), "unknown option: file");
  EXPECT_EQ(refusal({""}), "unknown option: ");
  EXPECT_EQ(refusal({"--"}), "unknown option: --");
  EXPECT_EQ(refusal({"-e=top"}), "unknown option: -e=top");
  EXPECT_EQ(refusal({"--Help"}), "unknown option: --Help");
  EXPECT_EQ(refusal({"--hel"}), "unknown option: --hel");
}

TEST(CommandLine, ShowsTheVersionAndTheHelp) {
  EXPECT_EQ(parsed({"--version"}).action, Action::ShowVersion);
  EXPECT_EQ(parsed({"--help"}).action, Action::ShowHelp);
  EXPECT_EQ(CommandLine::versionText(), "Zolt " ZOLT_VERSION "\n");
}

TEST(CommandLine, StartsAnInstanceOfItsOwnWhenAsked) {
  EXPECT_FALSE(parsed({}).newInstance);
  EXPECT_TRUE(parsed({"--new-instance"}).newInstance);
}

TEST(CommandLine, TakesTheDisplayOfThisRun) {
  EXPECT_EQ(parsed({}).display, std::nullopt);
  EXPECT_EQ(parsed({"--log"}).display, Display::Log);
  EXPECT_EQ(parsed({"--full-emulation"}).display, Display::FullEmulation);
  EXPECT_EQ(parsed({"--full-emulation", "--log"}).display, Display::Log);
  EXPECT_EQ(parsed({"--full-emulation", "-e", "top", "--log"}).display, Display::FullEmulation);
}

TEST(CommandLine, LeavesEverythingAfterMsgToTheMessage) {
  const CommandLine line = parsed({"msg", "split", "--help", "-e"});
  EXPECT_EQ(line.action, Action::SendMessage);
  EXPECT_EQ(line.message, (Arguments{"split", "--help", "-e"}));
  EXPECT_EQ(parsed({"-e", "msg"}).action, Action::Run);
  EXPECT_EQ(refusal({"--log", "msg"}), "unknown option: msg");
}

TEST(CommandLine, KnowsAServiceAsTheOneInstance) {
  EXPECT_FALSE(parsed({}).isService);
  EXPECT_TRUE(parsed({"--service"}).isService);
  EXPECT_EQ(refusal({"--service", "--new-instance"}), "--service is for the one instance that others find");
  EXPECT_EQ(refusal({"--service", "-e", "top"}), "--service is for the one instance that others find");
}

TEST(CommandLine, NamesEveryOptionInItsHelpWithWhatItTakes) {
  const std::string help = CommandLine::helpText();
  for (const char* option :
       {"\n  -e PROGRAM [ARG...]  ", "\n  --working-directory DIR  ", "\n  --screenshot FILE  ", "\n  --log  ",
        "\n  --new-instance  ", "\n  --full-emulation  ", "\n  --service  ", "\n  --version  ", "\n  --help  "}) {
    EXPECT_NE(help.find(option), std::string::npos) << option;
  }
  EXPECT_TRUE(help.starts_with("Usage: zolt "));
  EXPECT_NE(help.find("zolt msg --help"), std::string::npos);
  EXPECT_TRUE(help.ends_with("\n"));
}

}  // namespace
}  // namespace zolt
