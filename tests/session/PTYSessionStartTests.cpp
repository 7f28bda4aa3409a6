#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <set>
#include <sstream>
#include <string>

#include "platform/FileHandleProbe.h"
#include "session/PTYSession.h"
#include "session/SessionProbe.h"
#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using test::capturedOutput;
using test::missingShell;
using test::program;
using test::runLoopFor;
using test::SessionProbe;

// A program that prints its arguments, each in brackets, whatever they are.
class ArgumentPrinter {
 public:
  ArgumentPrinter() {
    std::ofstream(m_path) << "#!/bin/sh\nfor each; do printf '[%s]' \"$each\"; done\n";
    chmod(m_path.c_str(), 0700);
  }
  Shell with(std::vector<std::string> args) const {
    return Shell{.name = "Printer", .executable = m_path, .args = std::move(args), .icon = "terminal"};
  }

 private:
  QTemporaryDir m_folder;
  std::string m_path = m_folder.path().toStdString() + "/printer";
};

// Sets a variable of this process for one test.
class Variable {
 public:
  Variable(const char* name, const char* value) : m_name(name) {
    if (const char* before = std::getenv(name)) m_before = before;
    setenv(name, value, 1);
  }
  ~Variable() { m_before.empty() ? unsetenv(m_name) : setenv(m_name, m_before.c_str(), 1); }
  Variable(const Variable&) = delete;
  Variable& operator=(const Variable&) = delete;

 private:
  const char* m_name;
  std::string m_before;
};

// The variables that a program in the terminal inherits, as "NAME=value".
std::multiset<std::string> inherited() {
  std::multiset<std::string> all;
  std::istringstream stream(SessionProbe().outputOf(program({"environment"})));
  for (std::string variable; std::getline(stream, variable, '\0');) {
    all.insert(variable);
  }
  return all;
}

TEST(PTYSession, IsEmptyWhenNew) {
  PTYSession session;
  EXPECT_FALSE(session.isRunning());
  EXPECT_EQ(session.output(), "");
  EXPECT_FALSE(session.onOutput);
  EXPECT_FALSE(session.onExit);
  EXPECT_TRUE(session.isDrained());
  const std::size_t descriptors = test::descriptorsAtRest();
  EXPECT_EQ(capturedOutput([&] {
              session.write(Bytes(std::string("nowhere")));
              session.write("nowhere");
              session.sendSignal(SIGINT);
              session.terminate();
            }),
            "");
  EXPECT_EQ(test::descriptorsAtRest(), descriptors);
}

TEST(PTYSessionArguments, AreADashLForAnEmptyList) {
  const ArgumentPrinter printer;
  EXPECT_EQ(SessionProbe().outputOf(printer.with({})), "[-l]");
}

TEST(PTYSessionArguments, AreNotDoubledForAListThatIsDashL) {
  const ArgumentPrinter printer;
  EXPECT_EQ(SessionProbe().outputOf(printer.with({"-l"})), "[-l]");
}

TEST(PTYSessionArguments, AreTheListAsGivenWhereThereIsOne) {
  const ArgumentPrinter printer;
  EXPECT_EQ(SessionProbe().outputOf(printer.with({"-i", "", "two words"})), "[-i][][two words]");
}

TEST(PTYSessionEnvironment, SetsFourVariablesWhateverWasInherited) {
  const Variable term("TERM", "dumb");
  const Variable color("COLORTERM", "");
  const Variable name("TERM_PROGRAM", "other");
  const Variable version("TERM_PROGRAM_VERSION", "9");
  const auto seen = inherited();
  for (const char* expected :
       {"TERM=xterm-256color", "TERM_PROGRAM=Zolt", "TERM_PROGRAM_VERSION=1.0.0", "COLORTERM=truecolor"}) {
    EXPECT_EQ(seen.count(expected), 1U) << expected;
  }
  EXPECT_EQ(seen.count("TERM=dumb"), 0U);
}

TEST(PTYSessionEnvironment, PassesEveryOtherVariableUnchangedAndAddsNone) {
  const Variable rows("LINES", "7");
  const Variable own("ZOLT_TEST_VARIABLE", "kept = as it is");
  const Variable twoLines("ZOLT_TEST_LINES", "first\nsecond");
  std::multiset<std::string> expected;
  Environment environment = processEnvironment();
  environment["TERM"] = "xterm-256color";
  environment["TERM_PROGRAM"] = "Zolt";
  environment["TERM_PROGRAM_VERSION"] = "1.0.0";
  environment["COLORTERM"] = "truecolor";
  for (const auto& [key, value] : environment) {
    std::string variable = key + "=" + value;
    std::erase(variable, '\r');  // as the probe does with the terminal's output
    expected.insert(variable);
  }
  EXPECT_EQ(inherited(), expected);
}

TEST(PTYSessionStart, RunsTheShellAndSaysSo) {
  SessionProbe probe;
  EXPECT_TRUE(probe.session.start(program({"wait"})));
  EXPECT_TRUE(probe.session.isRunning());
  EXPECT_TRUE(probe.shows("waiting\n"));
  EXPECT_TRUE(probe.exits.empty());
}

TEST(PTYSessionStart, AnnouncesThatIsRunningChangesBeforeItDoes) {
  std::string seen;
  PTYSession session;
  QObject::connect(&session, &PTYSession::objectWillChange, [&] { seen += session.isRunning() ? "running " : "not "; });
  ASSERT_TRUE(session.start(program({"wait"})));
  EXPECT_EQ(seen, "not ");
  session.terminate();
  EXPECT_EQ(seen, "not running ");
}

TEST(PTYSessionStart, GivesTheShellTheTerminalForAllThreeStreamsAndNothingElse) {
  EXPECT_EQ(SessionProbe().outputOf(program({"descriptors"})), "0\n1\n2\n");
  EXPECT_EQ(SessionProbe().outputOf(program({"terminal"})), "session\nterminal\n");
}

TEST(PTYSessionStart, GivesTheShellStreamsThatBlock) {
  EXPECT_EQ(SessionProbe().outputOf(program({"streams"})), "blocking\nblocking\nblocking\n");
}

TEST(PTYSessionStart, LetsAProgramWaitForInput) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(test::script("stty -echo; echo ready; cat")));
  ASSERT_TRUE(probe.shows("ready\n"));
  runLoopFor(std::chrono::milliseconds(30));
  EXPECT_TRUE(probe.exits.empty());
  probe.session.write("typed\n");
  EXPECT_TRUE(probe.shows("typed\n"));
}

TEST(PTYSessionStart, PrintsAndReturnsFalseWhenTheExecutableIsMissing) {
  SessionProbe probe;
  bool started = true;
  EXPECT_EQ(capturedOutput([&] { started = probe.session.start(missingShell()); }),
            "Failed to start process: No such file or directory\n");
  EXPECT_FALSE(started);
  EXPECT_FALSE(probe.session.isRunning());
  runLoopFor(std::chrono::milliseconds(30));
  EXPECT_TRUE(probe.exits.empty());
  EXPECT_TRUE(test::childProcesses().empty());
}

TEST(PTYSessionStart, LeavesTheTerminalOpenWhenTheLaunchFails) {
  SessionProbe probe;
  capturedOutput([&] { probe.session.start(missingShell()); });
  EXPECT_EQ(capturedOutput([&] { probe.session.write("into the open terminal"); }), "");
  // The terminal itself echoes.
  EXPECT_TRUE(probe.shows("into the open terminal"));
}

TEST(PTYSessionStart, CanFollowAFailedStart) {
  SessionProbe probe;
  capturedOutput([&] { probe.session.start(missingShell()); });
  EXPECT_EQ(probe.outputOf(program({"echo", "at last"})), "at last\n");
}

TEST(PTYSessionStart, PrintsAndChangesNothingWhenThereIsNoPseudoTerminal) {
  SessionProbe probe;
  EXPECT_EQ(probe.outputOf(program({"echo", "warm"})), "warm\n");
  rlimit before{};
  getrlimit(RLIMIT_NOFILE, &before);
  rlimit none = before;
  none.rlim_cur = 3;
  bool started = true;
  bool running = true;
  // The captured output goes to a descriptor that is open already.
  const std::string printed = capturedOutput([&] {
    setrlimit(RLIMIT_NOFILE, &none);
    started = probe.session.start(program({"wait"}));
    running = probe.session.isRunning();
    setrlimit(RLIMIT_NOFILE, &before);
  });
  EXPECT_EQ(printed, "Failed to open PTY\n");
  EXPECT_FALSE(started);
  EXPECT_FALSE(running);
}

}  // namespace
}  // namespace zolt
