// fish with integration: the same shell as without, but for its marks.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "session/UsersShell.h"

namespace zolt {
namespace {

using test::Home;
using test::marks;
using test::UsersShell;
using test::WithAndWithout;
using Integration = UsersShell::Integration;
using Lines = std::vector<std::string>;

class IntegratedFishTest : public testing::Test {
 protected:
  void configure(const std::string& content) {
    m_home.write(".config/fish/config.fish",
                 "set -g fish_greeting; function fish_prompt; printf 'ready> '; end\n" + content + "\n");
  }
  UsersShell start() { return {m_home, test::shellAt(test::kFishPlaces), Integration::On}; }
  WithAndWithout contents(const std::string& file, const Lines& lines, const Environment& more = {}) {
    return test::contents(m_home, test::shellAt(test::kFishPlaces), file, lines, more);
  }

  Home m_home;
};

TEST_F(IntegratedFishTest, ReadsTheUsersFilesAndTheVendors) {
  configure("echo configuration >> ~/read");
  m_home.write(".config/fish/conf.d/first.fish", "echo first >> ~/read");
  m_home.write(".config/fish/conf.d/zzz.fish", "echo last >> ~/read");
  m_home.write("share/fish/vendor_conf.d/vendor.fish", "echo vendor >> ~/read");
  const auto [with, without] = contents("read", {}, {{"XDG_DATA_DIRS", m_home.file("share")}});
  EXPECT_EQ(with, without);
  EXPECT_EQ(with, "first\nlast\nvendor\nconfiguration\n");
}

TEST_F(IntegratedFishTest, HasTheVariablesFunctionsAndKeysItAlwaysHas) {
  configure("");
  const std::string own = m_home.file("share");
  const Lines lines{
      "set --long | string match -v -r '^(CMD_DURATION|fish_pid|history|status_generation|last_pid|version)' > state",
      "functions -an | tr ',' '\\n' | tr -d ' ' | grep -v __zolt >> state; bind >> state",
      "set --show XDG_DATA_DIRS ZOLT_XDG_DATA_DIRS | grep -v inherited >> state"};
  for (const Environment& more : {Environment{}, Environment{{"XDG_DATA_DIRS", own}}}) {
    const auto [with, without] = contents("state", lines, more);
    EXPECT_EQ(with, without);
  }
}

TEST_F(IntegratedFishTest, WritesTheHistoryItAlwaysWrites) {
  configure("");
  const std::string file = ".local/share/fish/fish_history";
  const auto commands = [](const std::string& history) {
    std::string found;
    for (std::size_t at = history.find("- cmd: "); at != std::string::npos; at = history.find("- cmd: ", at + 1)) {
      found += history.substr(at, history.find('\n', at) - at) + "\n";
    }
    return found;
  };
  const auto [with, without] = contents(file, {"true", "cd /", "false"});
  EXPECT_EQ(commands(with), commands(without));
  EXPECT_NE(commands(with).find("- cmd: cd /\n"), std::string::npos) << with;
}

TEST_F(IntegratedFishTest, LeavesThePromptAndEventsOfTheUserTheirStatus) {
  configure(
      "function fish_prompt; echo prompt $status $pipestatus >> ~/seen; printf 'ready> '; end\n"
      "function own --on-event fish_postexec; echo after $status $argv >> ~/seen; end");
  const auto [with, without] =
      contents("seen", {"echo > seen", "false", "true | sh -c 'exit 4'", "echo $status >> seen"});
  EXPECT_EQ(with, without);
  EXPECT_NE(with.find("prompt 4 0 4\n"), std::string::npos) << with;
}

TEST_F(IntegratedFishTest, LeavesTheUsersPromptFunctionAsItIs) {
  configure("");
  const auto [with, without] = contents("prompt", {"functions fish_prompt > prompt"});
  EXPECT_EQ(with, without);
}

}  // namespace
}  // namespace zolt
