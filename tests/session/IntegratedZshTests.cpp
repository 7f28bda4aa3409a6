// zsh with integration: the same shell as without, but for its marks.
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

class IntegratedZshTest : public testing::Test {
 protected:
  void configure(const std::string& content) { m_home.write(".zshrc", "PS1='ready> '\n" + content + "\n"); }
  UsersShell start() { return {m_home, test::shellAt(test::kZshPlaces), Integration::On}; }
  WithAndWithout contents(const std::string& file, const Lines& lines, const Environment& more = {}) {
    return test::contents(m_home, test::shellAt(test::kZshPlaces), file, lines, more);
  }
  // The files that are read, in this order, by a shell with these arguments.
  std::string filesRead(const std::vector<std::string>& args, const Environment& more = {}) {
    const auto [with, without] = test::contents(m_home, test::shellAt(test::kZshPlaces, args), "read", {}, more);
    EXPECT_EQ(with, without);
    return with;
  }
  // All of a user's files in a folder; each says that it is read and what ZDOTDIR is then.
  void sayWhenRead(const std::string& folder) {
    for (const std::string name : {".zshenv", ".zprofile", ".zshrc", ".zlogin", ".zlogout"}) {
      m_home.write(folder + name, "echo " + folder + name + " ${ZDOTDIR-unset} >> ~/read; PS1='ready> '\n");
    }
  }

  Home m_home;
};

TEST_F(IntegratedZshTest, ReadsTheUsersFiles) {
  sayWhenRead("");
  EXPECT_EQ(filesRead({}), ".zshenv unset\n.zprofile unset\n.zshrc unset\n.zlogin unset\n.zlogout unset\n");
  EXPECT_EQ(filesRead({"-i"}), ".zshenv unset\n.zshrc unset\n");
}

TEST_F(IntegratedZshTest, ReadsTheFilesOfTheFolderThatTheUserNames) {
  sayWhenRead("");
  sayWhenRead("other/");
  const std::string other = m_home.file("other");
  EXPECT_EQ(filesRead({"-i"}, {{"ZDOTDIR", other}}), "other/.zshenv " + other + "\nother/.zshrc " + other + "\n");
  m_home.write(".zshenv", "export ZDOTDIR=~/other");
  EXPECT_EQ(filesRead({"-i"}), "other/.zshrc " + other + "\n");
}

TEST_F(IntegratedZshTest, HasTheOptionsAndVariablesItAlwaysHas) {
  configure("");
  const Lines lines{"{ setopt; alias; bindkey; trap; ulimit -a; } > state",
                    "typeset -p HISTFILE HISTSIZE SAVEHIST IFS SHLVL ZDOTDIR fpath path PS2 PS4 RPS1 >> state 2>&1",
                    "print -rl -- ${(ko)functions:#__zolt_*} ${(ko)parameters:#(__zolt_*|*_functions)} >> state"};
  const auto [with, without] = contents("state", lines);
  EXPECT_EQ(with, without);
  const std::string other = m_home.file("other");
  m_home.write("other/.zshrc", "PS1='ready> '");
  const auto [withOther, withoutOther] = contents("state", lines, {{"ZDOTDIR", other}});
  EXPECT_EQ(withOther, withoutOther);
}

TEST_F(IntegratedZshTest, WritesTheHistoryItAlwaysWrites) {
  configure("HISTFILE=~/history; HISTSIZE=50; SAVEHIST=50");
  const auto [with, without] = contents("history", {"true", "cd /", "false"});
  EXPECT_EQ(with, without);
  EXPECT_EQ(with, "true\ncd /\nfalse\nexit 0\n");
}

TEST_F(IntegratedZshTest, LeavesTheHooksOfTheUserTheirStatus) {
  configure(
      "precmd() { echo own $? >> ~/seen; }; hook() { echo hook $? $pipestatus >> ~/seen; }\n"
      "before() { echo before $? $1 >> ~/seen; }\n"
      "precmd_functions=($precmd_functions hook); preexec_functions+=(before)");
  const auto [with, without] = contents("seen", {": > seen", "false", "true | (exit 4)", "echo $? >> seen"});
  EXPECT_EQ(with, without);
  EXPECT_NE(with.find("hook 4 0 4\n"), std::string::npos) << with;
}

TEST_F(IntegratedZshTest, MarksAPromptThatIsSetEachTime) {
  for (const char* configuration :
       {"precmd() { PS1=\"[$?] ready> \" }", "set_it() { PS1=\"[$?] ready> \" }\nprecmd_functions+=(set_it)",
        "autoload -Uz add-zsh-hook; set_it() { PS1=\"[$?] ready> \" }; add-zsh-hook precmd set_it"}) {
    configure(configuration);
    UsersShell shell = start();
    EXPECT_EQ(marks(shell.beginning()), "A B") << configuration;
    const std::string output = shell.run("sh -c 'exit 3'");
    EXPECT_EQ(marks(output), "C D;3 A B") << configuration;
    EXPECT_NE(output.find("[3] ready> \x1B]133;B"), std::string::npos) << output;
  }
}

TEST_F(IntegratedZshTest, MarksAPromptThatAHookAddedLaterSets) {
  configure("");
  UsersShell shell = start();
  shell.run("set_it() { PS1='new rea''dy> ' }; precmd_functions+=(set_it)");
  shell.run("true");
  EXPECT_EQ(marks(shell.run("false")), "C D;1 A B");
}

TEST_F(IntegratedZshTest, MarksAPromptOfSeveralLinesOnce) {
  configure("PS1=$'%~\\n%B%#%b ready> '; RPS1='right'");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.run("true")), "C D;0 A B");
  shell.run("OLD=$PS1; PS1=\"(venv) $PS1\"");
  EXPECT_EQ(marks(shell.run("PS1=$OLD")), "C D;0 A B");
}

TEST_F(IntegratedZshTest, MarksAPromptThatEndsInAPercentSign) {
  configure("PS1='ready> %'");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.beginning()), "A B");
  EXPECT_EQ(shell.beginning().find("{\x1B]133;B"), std::string::npos) << shell.beginning();
}

TEST_F(IntegratedZshTest, AddsNothingToMarksOfTheUsersOwn) {
  configure("PS1=$'%{\\e]133;A;k=i;own\\a%}ready> %{\\e]133;B\\a%}'");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.beginning()), "A B");
  EXPECT_EQ(marks(shell.run("true")), "C A B");
}

TEST_F(IntegratedZshTest, WorksUnderOptionsThatAreStrangeOrStrict) {
  configure(
      "setopt err_exit err_return no_unset ksh_arrays sh_word_split warn_create_global no_prompt_percent\n"
      "setopt all_export no_function_argzero glob_subst noclobber prompt_subst prompt_bang");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.beginning()), "A");
  EXPECT_EQ(marks(shell.run("setopt prompt_percent")), "C D;0 A B");
  EXPECT_EQ(marks(shell.run("! true")), "C D;1 A B");
  EXPECT_EQ(marks(shell.run("unset PWD OLDPWD HOST")), "C D;0 A B");
  const std::string output = shell.run("env");
  EXPECT_EQ(output.find("__zolt"), std::string::npos) << output;
}

TEST_F(IntegratedZshTest, WritesNothingWhereStandardOutputGoes) {
  configure("");
  UsersShell shell = start();
  EXPECT_EQ(marks(shell.run("exec 3>&1 > log")), "C D;0 A B");
  EXPECT_EQ(marks(shell.run("false")), "C D;1 A B");
  shell.run("exec >&3");
  EXPECT_EQ(marks(m_home.content("log")), "");
}

TEST_F(IntegratedZshTest, LeavesNoFunctionOfItsOwnAsPrecmd) {
  configure("");
  UsersShell shell = start();
  const std::string output = shell.run("echo \"have ${+functions[precmd]}\"");
  EXPECT_NE(output.find("have 0\n"), std::string::npos) << output;
}

}  // namespace
}  // namespace zolt
