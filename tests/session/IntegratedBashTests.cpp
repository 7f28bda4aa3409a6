// bash with integration: the same shell as without, but for its marks.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "session/UsersShell.h"

namespace zolt {
namespace {

using test::commandLines;
using test::Home;
using test::marks;
using test::UsersShell;
using test::WithAndWithout;
using Integration = UsersShell::Integration;
using Lines = std::vector<std::string>;

class IntegratedBashTest : public testing::Test {
 protected:
  // A login shell's file.
  void profile(const std::string& content) { m_home.write(".bash_profile", "PS1='ready> '\n" + content + "\n"); }
  UsersShell start() { return {m_home, test::shellAt(test::kBashPlaces), Integration::On}; }
  WithAndWithout contents(const std::string& file, const Lines& lines, const Environment& more = {}) {
    return test::contents(m_home, test::shellAt(test::kBashPlaces), file, lines, more);
  }
  // The files that are read, in this order, by a shell with these arguments.
  std::string filesRead(const std::vector<std::string>& args) {
    const auto [with, without] = test::contents(m_home, test::shellAt(test::kBashPlaces, args), "read", {});
    EXPECT_EQ(with, without);
    return with;
  }
  // A file that says that it is read.
  void sayWhenRead(const std::string& name) { m_home.write(name, "echo " + name + " >> ~/read; PS1='ready> '\n"); }

  Home m_home;
};

TEST_F(IntegratedBashTest, ReadsTheFirstOfALoginShellsFiles) {
  sayWhenRead(".bashrc");
  sayWhenRead(".profile");
  EXPECT_EQ(filesRead({}), ".profile\n");
  sayWhenRead(".bash_login");
  EXPECT_EQ(filesRead({}), ".bash_login\n");
  sayWhenRead(".bash_profile");
  EXPECT_EQ(filesRead({"--login", "-i"}), ".bash_profile\n");
  m_home.write(".bash_profile", "echo first >> ~/read; . ~/.bashrc; return; echo never >> ~/read");
  EXPECT_EQ(filesRead({}), "first\n.bashrc\n");
  m_home.write(".bash_logout", "echo logout >> ~/read");
  EXPECT_EQ(filesRead({}), "first\n.bashrc\nlogout\n");
}

TEST_F(IntegratedBashTest, ReadsAnInteractiveShellsFiles) {
  sayWhenRead(".bashrc");
  sayWhenRead(".bash_profile");
  EXPECT_EQ(filesRead({"-i"}), ".bashrc\n");
}

TEST_F(IntegratedBashTest, HasTheOptionsAndVariablesItAlwaysHas) {
  profile("");
  const Lines lines{
      "{ echo $-; set -o; shopt; trap -p; alias; bind -v; bind -p; ulimit -a; } > state",
      "declare -p HISTFILE HISTSIZE HISTFILESIZE MAILCHECK PS2 PS4 IFS SHLVL >> state",
      "declare -p ENV POSIXLY_CORRECT SHELLOPTS BASHOPTS >> state 2>&1",
      "declare -F | grep -v __zolt_ >> state; compgen -v | grep -v __zolt_ | grep -vE '^(PS0|_)$|PROMPT_COM' >> state"};
  for (const Environment& more :
       {Environment{}, Environment{{"HISTFILE", "/tmp/mine"}, {"MAILCHECK", "600"}, {"ENV", ""}}}) {
    const auto [with, without] = contents("state", lines, more);
    EXPECT_EQ(with, without);
  }
}

TEST_F(IntegratedBashTest, WritesTheHistoryItAlwaysWrites) {
  profile("");
  const auto [with, without] = contents(".bash_history", {"true", "cd /", "false"});
  EXPECT_EQ(with, without);
  EXPECT_EQ(with, "true\ncd /\nfalse\nexit 0\n");
}

TEST_F(IntegratedBashTest, LeavesThePromptCommandOfTheUserItsStatus) {
  profile(R"(PROMPT_COMMAND='echo $? ${PIPESTATUS[*]} $_ >> ~/seen')");
  const Lines lines{
      ": > seen",      "false", "true | (exit 4)", "echo a last", "PROMPT_COMMAND='echo new $? >> ~/seen'",
      "sh -c 'exit 9'"};
  const auto [with, without] = contents("seen", lines);
  EXPECT_EQ(with, without);
  EXPECT_EQ(with, "0 0 :\n1 1 false\n4 0 4 false\n0 0 last\nnew 0\nnew 9\n");
}

TEST_F(IntegratedBashTest, LeavesPromptCommandUnsetWhereItIs) {
  profile("");
  const auto [with, without] = contents("seen", {"set -u", "echo ${PROMPT_COMMAND-unset} > seen"});
  EXPECT_EQ(with, without);
}

TEST_F(IntegratedBashTest, StaysWhenTheUserAssignsToPromptCommand) {
  profile("");
  UsersShell shell = start();
  shell.run("PROMPT_COMMAND=true");
  EXPECT_EQ(marks(shell.run("false")), "C D;1 A B");
}

TEST_F(IntegratedBashTest, MarksAPromptThatIsSetEachTime) {
  profile("PROMPT_COMMAND='PS1=\"[$?] ready> \"'");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.beginning()), "A B");
  const std::string output = shell.run("sh -c 'exit 3'");
  EXPECT_EQ(marks(output), "C D;3 A B");
  EXPECT_NE(output.find("A;k=i\a[3] ready> \x1B]133;B"), std::string::npos) << output;
}

TEST_F(IntegratedBashTest, MarksAPromptThatAnEntryAddedLaterSets) {
  profile("");
  UsersShell shell = start();
  shell.run(R"(PROMPT_COMMAND+=('PS1="$? rea""dy> "'))");
  EXPECT_EQ(marks(shell.run("false")), "C D;1 A B");
}

TEST_F(IntegratedBashTest, MarksAPromptOfSeveralLinesOnce) {
  profile(R"(PS1='\w\n\[\e[1m\]ready> ')");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.run("true")), "C D;0 A B");
  shell.run("OLD=$PS1; PS1=\"(venv) $PS1\"");
  EXPECT_EQ(marks(shell.run("PS1=$OLD")), "C D;0 A B");
}

TEST_F(IntegratedBashTest, AddsNothingToMarksOfTheUsersOwn) {
  profile(R"(PS1='\[\e]133;A;k=i;own\a\]ready> \[\e]133;B\a\]'; PS0='\e]133;C\a')"
          "\nPROMPT_COMMAND='printf \"\\033]133;D;%s\\a\" mine'");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.beginning()), "D;mine A B");
  EXPECT_EQ(marks(shell.run("true")), "C D;mine A B");
}

TEST_F(IntegratedBashTest, ShowsWhatTheUserShowsBeforeTheOutput) {
  profile("PS0='before '");
  UsersShell shell = start();
  for (int times = 0; times < 2; ++times) {
    const std::string output = shell.run("true");
    EXPECT_NE(output.find("before \x1B]133;C"), std::string::npos) << output;
  }
}

TEST_F(IntegratedBashTest, KeepsToItselfWhatTheUserKeepsOutOfTheHistory) {
  profile("HISTCONTROL=ignoreboth");
  UsersShell shell = start();
  EXPECT_EQ(commandLines(shell.run("true 1")), Lines{";cmdline_url=true%201"});
  EXPECT_EQ(commandLines(shell.run(" true secret")), Lines{""});
  EXPECT_EQ(commandLines(shell.run("set +o history")), Lines{";cmdline_url=set%20%2Bo%20history"});
  EXPECT_EQ(commandLines(shell.run("true secret")), Lines{""});
}

TEST_F(IntegratedBashTest, WorksUnderOptionsThatAreStrict) {
  profile("set -euo pipefail; shopt -s failglob nocasematch extglob");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.beginning()), "A B");
  EXPECT_EQ(marks(shell.run("! true")), "C D;1 A B");
  EXPECT_EQ(marks(shell.run("IFS=_zolt; unset PWD OLDPWD HOSTNAME; PS0=")), "C D;0 A B");
  EXPECT_EQ(marks(shell.run("shopt -u promptvars")), "C D;0 A B");
  EXPECT_EQ(marks(shell.run("true")), "C D;0 A B");
}

TEST_F(IntegratedBashTest, ExportsNothingWhereEverythingIsExported) {
  profile("set -a");
  const auto [with, without] = contents("env", {"env | sort | grep -v ^PS0= | grep -v ^PS1= > env"});
  EXPECT_EQ(with, without);
}

TEST_F(IntegratedBashTest, LeavesChildrenAPromptCommandThatTheyCanRun) {
  profile("export PROMPT_COMMAND='echo \"status $?\"'");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.run("false")), "C D;1 A B");
  EXPECT_EQ(marks(shell.run("true | (exit 5)")), "C D;5 A B");
  const std::string output = shell.run("bash -c 'eval \"$PROMPT_COMMAND\"; echo \"then $?\"'");
  EXPECT_NE(output.find("status 0\nthen 0\n"), std::string::npos) << output;
}

TEST_F(IntegratedBashTest, LeavesTheDebugTrapItsCommands) {
  profile("trap 'echo \"$BASH_COMMAND\" >> ~/seen' DEBUG");
  const auto [with, without] = contents("seen", {"true one", "true two"});
  const auto inOwn = [](std::string seen) {
    const std::string hook = "\"${__zolt_hook-:}\"\n";
    for (std::size_t at = seen.find(hook); at != std::string::npos; at = seen.find(hook))
      seen.erase(at, hook.size());
    const std::string beginning = "__zolt_start\n";
    if (const std::size_t at = seen.find(beginning); at != std::string::npos) seen.erase(at, beginning.size());
    return seen;
  };
  EXPECT_EQ(inOwn(with), without);
}

TEST_F(IntegratedBashTest, StaysBeforeTheCommandThatHasToBeTheLast) {
  profile("__bp_interactive_mode() { :; }; PROMPT_COMMAND=(true __bp_interactive_mode)");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.run("false")), "C D;1 A B");
  const std::string output = shell.run("echo \"last ${PROMPT_COMMAND[@]: -1}\"");
  EXPECT_NE(output.find("last __bp_interactive_mode\n"), std::string::npos) << output;
}

}  // namespace
}  // namespace zolt
