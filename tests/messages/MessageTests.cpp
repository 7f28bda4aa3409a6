#include "messages/Message.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "messages/MessageFields.h"

namespace zolt {
namespace {

// Why a line is no message; empty if it is one.
std::string refusal(const std::string& line) {
  const auto message = Message::decoded(line);
  return message ? "" : message.reason();
}

std::string refusal(const Message& message) {
  const auto fine = checked(message);
  return fine ? "" : fine.reason();
}

void fill(std::string& field) {
  field.push_back('/');
}

void fill(std::vector<std::string>& field) {
  field.emplace_back("/");
}

const std::vector<Message> kMessages{
    {.verb = Verb::NewWindow,
     .workingDirectory = "/a b/\"c\"\n",
     .title = "Título",
     .program = {"sh", "-c", "", "echo \x7F"},
     .activationToken = "t"},
    {.verb = Verb::NewTab, .terminal = "1f"},
    {.verb = Verb::Split, .side = "down", .window = "2e", .workingDirectory = "/"},
    {.verb = Verb::SendText, .terminal = "1f", .text = std::string("a\0\x1B\n\xF0\x9F\x98\x80", 8), .token = "secret"},
    {.verb = Verb::List},
    {.verb = Verb::Focus, .window = "2e", .activationToken = "t"},
};

TEST(Message, ArrivesAsItWasSent) {
  for (const Message& message : kMessages) {
    const std::string line = message.encoded();
    EXPECT_EQ(line.find('\n'), line.size() - 1) << line;
    const auto decoded = Message::decoded(line);
    ASSERT_TRUE(decoded) << decoded.reason();
    EXPECT_EQ(decoded.value(), message) << line;
  }
}

TEST(Message, IsOneLineOfJsonThatOtherProgramsCanWrite) {
  EXPECT_EQ((Message{.verb = Verb::Split, .side = "down", .terminal = "1f"}).encoded(),
            "{\"zolt\":1,\"verb\":\"split\",\"side\":\"down\",\"terminal\":\"1f\"}\n");
  EXPECT_EQ((Message{.verb = Verb::NewTab, .program = {"sh", "-c"}}).encoded(),
            "{\"zolt\":1,\"verb\":\"new-tab\",\"program\":[\"sh\",\"-c\"]}\n");
  EXPECT_EQ(refusal(" { \"verb\" : \"list\", \"zolt\" : 1 } "), "");
}

TEST(Message, MustBeAnObjectThatSaysItsVersion) {
  for (const char* line : {"", "{", "null", "7", "\"list\"", "[]", "\xFF", "{\"zolt\":1,\"verb\":\"list\"}}"}) {
    EXPECT_EQ(refusal(line), "the request is not a JSON object") << line;
  }
  for (const char* line : {R"({"verb":"list"})", R"({"zolt":"1","verb":"list"})", R"({"zolt":1.5,"verb":"list"})",
                           R"({"zolt":0,"verb":"list"})", R"({"zolt":-1,"verb":"list"})"}) {
    EXPECT_EQ(refusal(line), "the request does not say which version of the messages it is of") << line;
  }
}

TEST(Message, OfANewerVersionIsRefusedWhateverElseItSays) {
  for (const char* line : {R"({"zolt":2,"verb":"list"})", R"({"zolt":2,"verb":"fly","wings":2})",
                           R"({"zolt":18446744073709551615,"verb":"list"})"}) {
    EXPECT_EQ(refusal(line), "this Zolt understands version 1 of the messages, and the request is of a newer one")
        << line;
  }
}

TEST(Message, NamesAVerbThatThereIs) {
  EXPECT_EQ(refusal(R"({"zolt":1})"), "the request has no verb");
  EXPECT_EQ(refusal(R"({"zolt":1,"verb":7})"), "the request has no verb");
  EXPECT_EQ(refusal(R"({"zolt":1,"verb":"fly\u001b"})"), "there is no verb \"fly?\"");
  EXPECT_EQ(refusal(R"({"zolt":1,"verb":")" + std::string(1000, 'x') + "\"}"),
            "there is no verb \"" + std::string(60, 'x') + "...\"");
}

TEST(Message, HasOnlyTheFieldsOfItsVerb) {
  EXPECT_EQ(refusal(R"({"zolt":1,"verb":"list","wings":2})"), "list takes no \"wings\"");
  EXPECT_EQ(refusal(R"({"zolt":1,"verb":"list","title":"a"})"), "list takes no \"title\"");
  EXPECT_EQ(refusal(Message{.verb = Verb::Focus, .program = {"sh"}}), "focus takes no program");
  for (const Message& message : kMessages) {
    for (const FieldRow& row : fieldRows()) {
      Message changed = message;
      std::visit([&](auto member) { fill(changed.*member); }, row.member);
      if (row.verbs.contains(message.verb)) continue;
      EXPECT_NE(refusal(changed), "") << row.key;
    }
  }
}

TEST(Message, HasFieldsOfTheRightType) {
  for (const char* value : {"7", "null", "[]", "{}", "true"}) {
    EXPECT_EQ(refusal(std::string(R"({"zolt":1,"verb":"focus","window":)") + value + "}"),
              "\"window\" is of the wrong type");
  }
  for (const char* value : {"\"sh\"", "[7]", "[\"sh\",7]", "[[\"sh\"]]", "{\"a\":\"b\"}"}) {
    EXPECT_EQ(refusal(std::string(R"({"zolt":1,"verb":"split","program":)") + value + "}"),
              "\"program\" is of the wrong type")
        << value;
  }
}

TEST(Message, HasFieldsThatMakeSense) {
  EXPECT_EQ(refusal(Message{.verb = Verb::Split, .side = "up"}), "a split is made to the right or down, not \"up\"");
  EXPECT_EQ(refusal(Message{.verb = Verb::NewTab, .workingDirectory = "a"}),
            "the working directory must be an absolute path, not \"a\"");
  EXPECT_EQ(refusal(Message{.verb = Verb::NewTab, .program = {"", "a"}}), "the program has no name");
  EXPECT_EQ(refusal(Message{.verb = Verb::Focus, .terminal = "1", .window = "2"}),
            "a terminal and a window cannot both be given");
  EXPECT_EQ(refusal(Message{.verb = Verb::SendText, .text = "a"}), "send-text needs the ID of a terminal");
  EXPECT_EQ(refusal(Message{.verb = Verb::NewTab, .title = "\xFF"}), "title is not valid UTF-8");
  EXPECT_EQ(refusal(Message{.verb = Verb::NewTab, .program = {"sh", "\xC3"}}), "program is not valid UTF-8");
  EXPECT_EQ(refusal(Message{.verb = Verb::NewTab, .program = {"sh", std::string("a\0b", 3)}}),
            "program holds a NUL character");
  EXPECT_EQ(refusal(R"({"zolt":1,"verb":"new-tab","workingDirectory":"/a\u0000"})"),
            "workingDirectory holds a NUL character");
}

TEST(Message, IsAtMostAMebibyteLong) {
  const std::string head = R"({"zolt":1,"verb":"send-text","terminal":"a","text":")";
  const std::string fits = head + std::string(kRequestLimitBytes - head.size() - 2, 'x') + "\"}";
  EXPECT_EQ(refusal(fits), "");
  EXPECT_EQ(refusal(fits + " "), "the request is larger than 1 MiB");
}

TEST(Message, IsRefusedHoweverDeepItIsNested) {
  EXPECT_EQ(refusal(std::string(kRequestLimitBytes, '[')), "the request is not a JSON object");
  const std::string half(kRequestLimitBytes / 2 - 100, '[');
  const std::string other(half.size(), ']');
  EXPECT_EQ(refusal(R"({"zolt":1,"verb":"focus","window":)" + half + other + "}"), "\"window\" is of the wrong type");
}

TEST(Message, TypesEveryLineEndAsTheEnterKey) {
  EXPECT_EQ(asTyped("make\n"), "make\r");
  EXPECT_EQ(asTyped("a\r\nb\rc\n\nd\x03"), "a\rb\rc\r\rd\x03");
  EXPECT_EQ(asTyped(""), "");
}

}  // namespace
}  // namespace zolt
