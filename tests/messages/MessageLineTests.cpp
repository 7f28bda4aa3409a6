#include "messages/MessageLine.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "messages/MessageFields.h"

namespace zolt {
namespace {

using Arguments = std::vector<std::string>;

MessageLine parsed(const Arguments& arguments) {
  const auto line = MessageLine::parse(arguments);
  EXPECT_TRUE(line) << line.reason();
  return line ? line.value() : MessageLine{};
}

std::string refusal(const Arguments& arguments) {
  const auto line = MessageLine::parse(arguments);
  return line ? "" : line.reason();
}

TEST(MessageLine, BeginsWithAVerb) {
  for (const VerbRow& row : verbRows()) {
    Arguments arguments{row.name};
    if (row.verb == Verb::SendText) arguments.emplace_back("text");
    EXPECT_EQ(parsed(arguments).message.verb, row.verb);
  }
  EXPECT_EQ(refusal({}), "a verb is missing; zolt msg --help tells them all");
  EXPECT_EQ(refusal({"fly\n"}), "there is no verb fly?; zolt msg --help tells them all");
}

TEST(MessageLine, TakesOptionsInBothForms) {
  const Message expected{.verb = Verb::NewTab, .terminal = "1f", .workingDirectory = "a b", .title = "x=y"};
  EXPECT_EQ(parsed({"new-tab", "--terminal", "1f", "--working-directory=a b", "--title=x=y"}).message, expected);
  EXPECT_EQ(parsed({"new-tab", "--title", "x=y", "--terminal=1f", "--working-directory", "a b"}).message, expected);
}

TEST(MessageLine, RefusesOptionsThatTheVerbDoesNotTake) {
  EXPECT_EQ(refusal({"list", "--title", "a"}), "list takes no --title");
  EXPECT_EQ(refusal({"list", "--fly"}), "unknown option: --fly");
  EXPECT_EQ(refusal({"new-tab", "--title"}), "--title needs a value: TITLE");
  EXPECT_EQ(refusal({"new-tab", "--title="}), "--title needs a value: TITLE");
  EXPECT_EQ(refusal({"new-tab", "--title", ""}), "--title needs a value: TITLE");
  EXPECT_EQ(refusal({"list", "all"}), "unexpected argument: all");
}

TEST(MessageLine, TakesTheSideOfASplit) {
  EXPECT_EQ(parsed({"split"}).message.side, "");
  EXPECT_EQ(parsed({"split", "down"}).message.side, "down");
  EXPECT_EQ(refusal({"split", "down", "right"}), "unexpected argument: right");
}

TEST(MessageLine, TakesEverythingAfterTwoDashesForTheProgram) {
  EXPECT_EQ(parsed({"split", "down", "--", "ls", "--help", "--", ""}).message,
            (Message{.verb = Verb::Split, .side = "down", .program = {"ls", "--help", "--", ""}}));
  EXPECT_EQ(refusal({"new-window", "--"}), "-- needs a program");
  EXPECT_EQ(refusal({"new-window", "--", ""}), "-- needs a program");
  EXPECT_EQ(refusal({"list", "--", "ls"}), "unexpected argument: ls");
}

TEST(MessageLine, TakesATextOrStandardInput) {
  EXPECT_EQ(parsed({"send-text", "--terminal", "1f", "a\n"}).message.text, "a\n");
  EXPECT_EQ(parsed({"send-text", "--", "--a"}).message.text, "--a");
  const MessageLine line = parsed({"send-text", "--token", "secret", "-"});
  EXPECT_TRUE(line.readsText);
  EXPECT_EQ(line.message.text, "");
  EXPECT_EQ(line.message.token, "secret");
  EXPECT_EQ(refusal({"send-text"}), "send-text needs a text, or - for standard input");
  EXPECT_EQ(refusal({"send-text", ""}), "send-text needs a text, or - for standard input");
  EXPECT_EQ(refusal({"send-text", "-", "a"}), "unexpected argument: a");
  EXPECT_EQ(refusal({"send-text", "a", "b"}), "unexpected argument: b");
}

TEST(MessageLine, TellsAllVerbsAndOptionsInItsHelp) {
  EXPECT_TRUE(parsed({"--help"}).wantsHelp);
  EXPECT_TRUE(parsed({"split", "--help"}).wantsHelp);
  EXPECT_EQ(parsed({"split", "--", "ls", "--help"}).wantsHelp, false);
  const std::string help = MessageLine::helpText();
  for (const VerbRow& row : verbRows()) {
    EXPECT_NE(help.find(std::string("  ") + row.name), std::string::npos) << row.name;
  }
  for (const FieldRow& row : fieldRows()) {
    if (row.option == nullptr) continue;
    EXPECT_NE(help.find(row.option), std::string::npos) << row.option;
  }
}

}  // namespace
}  // namespace zolt
