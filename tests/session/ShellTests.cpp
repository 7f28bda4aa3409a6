#include "session/Shell.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace zolt {
namespace {

const char* const kId = "3F2504E0-4F89-41D3-9A0C-0305E82C3301";

// The members of a record as JSON texts, to leave out or replace one.
using Members = std::map<std::string, std::string>;

Members validMembers() {
  return {{"id", std::string("\"") + kId + "\""},
          {"name", "\"Zsh\""},
          {"executable", "\"/bin/zsh\""},
          {"args", R"(["-i","-l"])"},
          {"icon", "\"z.circle\""}};
}

std::string json(const Members& members) {
  std::string text;
  for (const auto& [key, value] : members) {
    text += (text.empty() ? "{\"" : ",\"") + key + "\":" + value;
  }
  return text + "}";
}

TEST(ShellEncoding, WritesFiveKeysInOrder) {
  const Shell shell{.id = QUuid::fromString(QString::fromLatin1(kId)),
                    .name = "My \"Shell\"",
                    .executable = "/opt/\xC3\xA9/sh",
                    .args = {"-i", ""},
                    .icon = "terminal"};
  EXPECT_EQ(shell.encoded(),
            "{\"id\":\"3F2504E0-4F89-41D3-9A0C-0305E82C3301\",\"name\":\"My \\\"Shell\\\"\","
            "\"executable\":\"/opt/\xC3\xA9/sh\",\"args\":[\"-i\",\"\"],\"icon\":\"terminal\"}");
}

TEST(ShellEncoding, WritesAnEmptyListOfArgumentsAsSuch) {
  EXPECT_NE(Shell::bash().encoded().find("\"args\":[]"), std::string::npos);
}

TEST(ShellEncoding, ReadsWhatItWrites) {
  for (const Shell& shell : {Shell::bash(), Shell::zsh(), Shell::fish(), Shell::sh()}) {
    const auto decoded = Shell::decode(shell.encoded());
    ASSERT_TRUE(decoded) << decoded.reason();
    EXPECT_EQ(decoded.value(), shell);
  }
}

TEST(ShellEncoding, ReplacesInvalidUtf8) {
  Shell shell = Shell::sh();
  shell.executable = "/bin/\xFF";
  const auto decoded = Shell::decode(shell.encoded());
  ASSERT_TRUE(decoded);
  EXPECT_EQ(decoded.value().executable, "/bin/\xEF\xBF\xBD");
}

TEST(ShellDecoding, ReadsEveryField) {
  const auto decoded = Shell::decode(json(validMembers()));
  ASSERT_TRUE(decoded) << decoded.reason();
  EXPECT_EQ(decoded.value().id, QUuid::fromString(QString::fromLatin1(kId)));
  EXPECT_EQ(decoded.value().name, "Zsh");
  EXPECT_EQ(decoded.value().executable, "/bin/zsh");
  EXPECT_EQ(decoded.value().args, (std::vector<std::string>{"-i", "-l"}));
  EXPECT_EQ(decoded.value().icon, "z.circle");
}

TEST(ShellDecoding, TakesAnIdInLowerCaseAndTheNilId) {
  Members members = validMembers();
  members["id"] = "\"3f2504e0-4f89-41d3-9a0c-0305e82c3301\"";
  EXPECT_TRUE(Shell::decode(json(members)));
  members["id"] = "\"00000000-0000-0000-0000-000000000000\"";
  EXPECT_TRUE(Shell::decode(json(members)));
}

TEST(ShellDecoding, FailsWithoutAnyOneKey) {
  for (const auto& [key, value] : validMembers()) {
    Members members = validMembers();
    members.erase(key);
    const auto decoded = Shell::decode(json(members));
    EXPECT_FALSE(decoded) << "without " << key;
    EXPECT_TRUE(decoded || decoded.reason().find(key) != std::string::npos) << decoded.reason();
  }
}

TEST(ShellDecoding, FailsWithoutAnIcon) {
  Members members = validMembers();
  members.erase("icon");
  EXPECT_FALSE(Shell::decode(json(members)));
}

TEST(ShellDecoding, FailsForAValueOfAnotherType) {
  for (const auto& [key, value] : validMembers()) {
    for (const char* other : {"5", "null", "true", "{}", "[1]", "[[]]"}) {
      Members members = validMembers();
      members[key] = other;
      EXPECT_FALSE(Shell::decode(json(members))) << key << " as " << other;
    }
  }
  Members members = validMembers();
  members["args"] = "\"-l\"";
  EXPECT_FALSE(Shell::decode(json(members)));
  members["args"] = "[\"-l\",null]";
  EXPECT_FALSE(Shell::decode(json(members)));
}

TEST(ShellDecoding, FailsForAnInvalidUuid) {
  for (const char* id : {"", "Zsh", "{3F2504E0-4F89-41D3-9A0C-0305E82C3301}", "3F2504E0-4F89-41D3-9A0C-0305E82C330",
                         "3F2504E0-4F89-41D3-9A0C-0305E82C330G", "3F2504E04F8941D39A0C0305E82C3301"}) {
    Members members = validMembers();
    members["id"] = std::string("\"") + id + "\"";
    EXPECT_FALSE(Shell::decode(json(members))) << id;
  }
}

TEST(ShellDecoding, FailsForAnythingButAnObject) {
  for (const char* text : {"", "{", "[]", "\"Zsh\"", "null", "{\"id\":\"\xFF\"}"}) {
    EXPECT_FALSE(Shell::decode(text)) << text;
  }
  EXPECT_FALSE(Shell::decode(json(validMembers()) + "x"));
}

TEST(ShellConstants, NameTheFourShells) {
  const auto check = [](const Shell& shell, const char* name, const char* executable, const char* icon) {
    EXPECT_EQ(shell.name, name);
    EXPECT_EQ(shell.executable, executable);
    EXPECT_EQ(shell.icon, icon);
    EXPECT_TRUE(shell.args.empty());
  };
  check(Shell::bash(), "Bash", "/bin/bash", "chevron.left.forwardslash.chevron.right");
  check(Shell::zsh(), "Zsh", "/bin/zsh", "z.circle");
  check(Shell::fish(), "Fish", "/opt/homebrew/bin/fish", "fish");
  check(Shell::sh(), "Sh", "/bin/sh", "terminal");
}

TEST(ShellConstants, KeepTheirIdBetweenReads) {
  EXPECT_EQ(Shell::zsh().id, Shell::zsh().id);
  EXPECT_FALSE(Shell::zsh().id.isNull());
  EXPECT_NE(Shell::zsh().id, Shell::bash().id);
}

TEST(Shell, HasAFreshIdEachTimeItIsBuilt) {
  EXPECT_NE(Shell{}.id, Shell{}.id);
}

}  // namespace
}  // namespace zolt
