// The shells that people use, run as a terminal runs them.
#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/Environment.h"
#include "session/ControllerProbe.h"
#include "session/SessionProbe.h"
#include "session/TerminalController.h"
#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using test::ControllerProbe;
using test::runLoopFor;
using test::waitFor;
using Statuses = std::vector<std::int32_t>;

struct RealShell {
  const char* name;
  std::vector<std::string> places;
};

void PrintTo(const RealShell& shell, std::ostream* stream) {
  *stream << shell.name;
}

// A terminal with a login shell of a user who has configured nothing.
class RealShellTest : public testing::TestWithParam<RealShell> {
 protected:
  void SetUp() override {
    for (const std::string& place : GetParam().places) {
      if (m_executable.empty() && isExecutableFile(place)) m_executable = place;
    }
    if (m_executable.empty()) GTEST_SKIP() << GetParam().name << " is not installed";
    for (const char* name : {"HOME", "ZDOTDIR", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"}) {
      setenv(name, home().c_str(), 1);
    }
    setenv("HISTFILE", file("history").c_str(), 1);
    std::ofstream(file(".zshrc")) << "\n";  // without one zsh asks its new user questions
    // Without one fish reads all manual pages in the background.
    std::filesystem::create_directories(file("fish/generated_completions"));
    m_probe = std::make_unique<ControllerProbe>(
        Shell{.name = GetParam().name, .executable = m_executable, .args = {}, .icon = "terminal"});
    terminal().resize(24, 80);
    const PTYSession::OutputHandler grid = terminal().ptySession().onOutput;
    terminal().ptySession().onOutput = [this, grid](const Bytes& chunk) {
      grid(chunk);
      m_output += chunk.view();
    };
    ASSERT_TRUE(prompts());
  }

  void TearDown() override {
    m_probe.reset();
    EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); })) << "a process is left behind";
  }

  std::string home() const { return m_home.path().toStdString(); }
  std::string file(const std::string& name) const { return home() + "/" + name; }
  ControllerProbe& probe() { return *m_probe; }
  TerminalController& terminal() { return **m_probe; }

  // Whether a shell has said something since the last time this was asked: it is there.
  bool prompts() {
    const bool said = waitFor([this] { return !m_output.empty(); });
    m_output.clear();
    return said;
  }

  void type(const std::string& line) {
    terminal().sendInput(line);
    terminal().sendKey(TerminalKey::Case::Enter);
  }

  bool shows(const std::string& text) {
    return waitFor([&] { return m_output.find(text) != std::string::npos; });
  }

  // Whether a command is run; its echo does not hold what it prints.
  bool obeys() {
    m_output.clear();
    type("printf 'ob%s\\n' eyed");
    return shows("obeyed");
  }

  // The process of a command that takes its time; 0 if it does not come up.
  pid_t startSleeper() {
    type("sleep 100");
    pid_t sleeper = 0;
    waitFor([&] {
      for (const pid_t child : test::childProcesses(pid())) {
        if (test::programName(child) == "sleep") sleeper = child;
      }
      return sleeper != 0;
    });
    return sleeper;
  }

  pid_t pid() const {
    const std::vector<pid_t> children = test::childProcesses();
    return children.empty() ? 0 : children.front();
  }

 private:
  QTemporaryDir m_home;
  std::string m_executable;
  std::string m_output;
  std::unique_ptr<ControllerProbe> m_probe;
};

TEST_P(RealShellTest, RunsACommand) {
  EXPECT_EQ(terminal().title(), GetParam().name);
  EXPECT_TRUE(obeys());
  type("printf 'con%s' tent > " + file("made"));
  EXPECT_TRUE(waitFor([&] { return test::fileContent(file("made")) == "content"; }));
}

TEST_P(RealShellTest, KnowsItsTerminal) {
  type("tty > " + file("tty") + "; stty size > " + file("size") + "; printf %s \"$TERM\" > " + file("term"));
  EXPECT_TRUE(waitFor([&] { return test::fileContent(file("term")) == "xterm-256color"; }));
  EXPECT_EQ(test::fileContent(file("size")), "24 80\n");
  EXPECT_EQ(test::fileContent(file("tty")).find("/dev/"), 0U);
}

TEST_P(RealShellTest, StaysEndedAfterExit0) {
  ASSERT_TRUE(obeys());
  type("exit 0");
  ASSERT_TRUE(probe().hasEnded());
  EXPECT_EQ(probe().statuses, Statuses{0});
  // The shell's last words may arrive after its end was noticed.
  ASSERT_TRUE(waitFor([this] { return terminal().ptySession().isDrained(); }));
  ASSERT_TRUE(test::SessionProbe::deliversWhatWasSubmitted());
  const std::string lastScreen = test::gridText(terminal());
  runLoopFor(TerminalController::restartDelay + std::chrono::milliseconds(100));
  EXPECT_FALSE(terminal().ptySession().isRunning());
  EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); }));
  EXPECT_EQ(test::gridText(terminal()), lastScreen);
}

TEST_P(RealShellTest, IsStartedAgainAfterExit1) {
  ASSERT_TRUE(obeys());
  type("exit 1");
  ASSERT_TRUE(probe().hasEnded());
  EXPECT_EQ(probe().statuses, Statuses{1});
  runLoopFor(std::chrono::milliseconds(20));
  prompts();
  ASSERT_TRUE(probe().runs());
  EXPECT_TRUE(obeys());
}

TEST_P(RealShellTest, IsStartedAgainAfterItWasKilled) {
  ASSERT_TRUE(obeys());
  const pid_t killed = pid();
  kill(killed, SIGKILL);
  ASSERT_TRUE(probe().hasEnded());
  EXPECT_EQ(probe().statuses, Statuses{SIGKILL});
  ASSERT_TRUE(probe().runs());
  ASSERT_TRUE(prompts());
  EXPECT_TRUE(obeys());
  EXPECT_NE(pid(), killed);
}

TEST_P(RealShellTest, LetsControlCInterruptTheForegroundJob) {
  ASSERT_TRUE(obeys());
  const pid_t sleeper = startSleeper();
  ASSERT_NE(sleeper, 0);
  terminal().sendKey(TerminalKey::ctrl("c"));
  EXPECT_TRUE(waitFor([&] { return !test::processRuns(sleeper); }));
  EXPECT_TRUE(obeys());
  EXPECT_TRUE(terminal().ptySession().isRunning());
}

TEST_P(RealShellTest, LeavesNoJobBehindWhenTheTerminalIsReleased) {
  ASSERT_TRUE(obeys());
  const pid_t sleeper = startSleeper();
  ASSERT_NE(sleeper, 0);
  TearDown();
  EXPECT_TRUE(waitFor([&] { return !test::processRuns(sleeper); }));
}

INSTANTIATE_TEST_SUITE_P(Shells, RealShellTest,
                         testing::Values(RealShell{"bash", {"/bin/bash"}}, RealShell{"zsh", {"/bin/zsh"}},
                                         RealShell{"fish", {"/usr/bin/fish", "/opt/homebrew/bin/fish"}},
                                         RealShell{"sh", {"/bin/sh"}}),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace zolt
