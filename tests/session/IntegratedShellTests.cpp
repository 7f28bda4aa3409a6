// What the shells report alike, and what integration changes in none of them.
#include <gtest/gtest.h>

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

#include "session/UsersShell.h"

namespace zolt {
namespace {

using test::commandLines;
using test::Home;
using test::marks;
using test::reports;
using test::UsersShell;
using Integration = UsersShell::Integration;

struct Kind {
  const char* name;
  test::Places places;
  const char* configuration;  // the file that shows the prompt
  const char* prompt;         // what it holds for that
  const char* end;            // the mark behind the prompt, if the shell has a place for it
};

void PrintTo(const Kind& kind, std::ostream* stream) {
  *stream << kind.name;
}

class IntegratedShellTest : public testing::TestWithParam<Kind> {
 protected:
  void SetUp() override { m_home.write(GetParam().configuration, GetParam().prompt); }

  Home& home() { return m_home; }
  Shell shell() const { return test::shellAt(GetParam().places); }
  std::unique_ptr<UsersShell> start(Integration integration, Environment more = {}) const {
    return std::make_unique<UsersShell>(m_home, shell(), integration, std::move(more));
  }
  // The marks of a prompt, behind others.
  std::string prompt(const std::string& others = "") const {
    return others + (others.empty() ? "A" : " A") + GetParam().end;
  }
  test::WithAndWithout contents(const std::string& file, const std::vector<std::string>& lines,
                                const Environment& more = {}) {
    return test::contents(m_home, shell(), file, lines, more);
  }

 private:
  Home m_home;
};

TEST_P(IntegratedShellTest, MarksPromptsAndCommandsWithTheirStatus) {
  const auto shell = start(Integration::On);
  EXPECT_EQ(marks(shell->beginning()), prompt());
  EXPECT_EQ(marks(shell->run("true")), prompt("C D;0"));
  EXPECT_EQ(marks(shell->run("false")), prompt("C D;1"));
  EXPECT_EQ(marks(shell->run("sh -c 'exit 3'")), prompt("C D;3"));
  EXPECT_EQ(marks(shell->run("no-such-command 2>&1")), prompt("C D;127"));
}

TEST_P(IntegratedShellTest, MarksTheOutputWhereItIs) {
  const auto shell = start(Integration::On);
  const std::string output = shell->run("printf 'out%s' put");
  const std::size_t text = output.find("output");
  EXPECT_LT(output.find("\x1B]133;C"), text);
  EXPECT_LT(text, output.find("\x1B]133;D"));
  EXPECT_LT(output.find("\x1B]133;D"), output.find("\x1B]133;A"));
  EXPECT_LT(output.find("\x1B]133;A"), output.find(UsersShell::kPrompt));
}

TEST_P(IntegratedShellTest, MarksNoCommandWhereNoneWasRun) {
  const auto shell = start(Integration::On);
  shell->run("false");
  EXPECT_EQ(marks(shell->enter("\r")), prompt());
  EXPECT_EQ(marks(shell->enter("  \r")), prompt());
  shell->type("half a command");
  EXPECT_TRUE(shell->shows("half"));
  EXPECT_EQ(marks(shell->enter("\x03")), prompt());
  EXPECT_EQ(marks(shell->run("true")), prompt("C D;0"));
}

TEST_P(IntegratedShellTest, TellsTheCommandLine) {
  const auto shell = start(Integration::On);
  EXPECT_EQ(commandLines(shell->run("true 'a;b' \"%\xC3\xBC\"")),
            std::vector<std::string>{";cmdline_url=true%20%27a%3Bb%27%20%22%25%C3%BC%22"});
  EXPECT_EQ(commandLines(shell->run("true " + std::string(3000, 'x'))), std::vector<std::string>{""});
}

TEST_P(IntegratedShellTest, ReportsItsFolderAtEachPrompt) {
  std::filesystem::create_directory(home().file("a b%\xC3\xBC;c"));
  const auto shell = start(Integration::On);
  const auto folder = [](const std::string& output) {
    const std::vector<std::string> all = reports(output, "7");
    EXPECT_EQ(all.size(), 1U);
    return all.empty() || !all[0].starts_with("file://") ? "" : all[0].substr(all[0].find('/', 7));
  };
  EXPECT_EQ(folder(shell->beginning()), home().path());
  EXPECT_EQ(folder(shell->run("cd 'a b%\xC3\xBC;c'")), home().path() + "/a%20b%25%C3%BC%3Bc");
  EXPECT_EQ(folder(shell->run("true")), home().path() + "/a%20b%25%C3%BC%3Bc");
  EXPECT_EQ(folder(shell->run("cd /")), "/");
}

TEST_P(IntegratedShellTest, GivesChildrenTheEnvironmentTheyAlwaysHad) {
  const std::vector<std::string> lines{"env | sort > env"};
  const Environment own{{"ENV", "/my/env"}, {"XDG_DATA_DIRS", "/my/share:/usr/share"}};
  for (const Environment& more : {Environment{}, own}) {
    const auto [with, without] = contents("env", lines, more);
    EXPECT_EQ(with, without);
  }
}

TEST_P(IntegratedShellTest, GivesAShellStartedInItNothing) {
  const auto shell = start(Integration::On);
  const std::string output = shell->enter("exec " + this->shell().executable + " -l\r");
  EXPECT_TRUE(marks(output).starts_with("C")) << marks(output);
  EXPECT_EQ(marks(output).find("A"), std::string::npos) << marks(output);
}

TEST_P(IntegratedShellTest, EndsWithTheUsersStatus) {
  EXPECT_EQ(start(Integration::On)->statusAfter("exit 5"), 5);
  const auto shell = start(Integration::On);
  shell->run("sh -c 'exit 7'");
  EXPECT_EQ(shell->statusAfter("exit"), 7);
}

const Kind kKinds[] = {{"Bash", test::kBashPlaces, ".bash_profile", "PS1='ready> '\n", " B"},
                       {"Zsh", test::kZshPlaces, ".zshrc", "PS1='ready> '\n", " B"},
                       {"Fish", test::kFishPlaces, ".config/fish/config.fish",
                        "set -g fish_greeting\nfunction fish_prompt; printf 'ready> '; end\n", ""}};

INSTANTIATE_TEST_SUITE_P(Each, IntegratedShellTest, testing::ValuesIn(kKinds),
                         [](const testing::TestParamInfo<Kind>& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace zolt
