#include <QProcess>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <tuple>

#include "brew/BrewFixture.h"
#include "platform/ChildProcess.h"
#include "platform/PseudoTerminal.h"

namespace zolt {
namespace {

using Names = std::vector<std::string>;

// A separate process that ends while its commands are running.
class BrewLifetimeTest : public test::BrewTest {
 protected:
  void TearDown() override {
    for (const pid_t pid : everyone()) {
      kill(pid, SIGKILL);
    }
    m_host.waitForFinished();
    BrewTest::TearDown();
  }

  void startHost(const QStringList& arguments, const std::string& tool = ZOLT_FAKE_BREW) {
    m_host.start(QStringLiteral(ZOLT_BREW_HOST), QStringList(QString::fromStdString(tool)) + arguments);
    ASSERT_TRUE(m_host.waitForStarted());
  }
  void endHost(int signal) {
    kill(static_cast<pid_t>(m_host.processId()), signal);
    ASSERT_TRUE(m_host.waitForFinished());
  }

  // All descendants of the host, found by a word in their environment; not this process.
  std::vector<pid_t> everyone() const {
    const std::string mark = "FAKEBREW_LOG=" + folder.filePath(QStringLiteral("log")).toStdString() + '\0';
    std::vector<pid_t> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
      const std::string name = entry.path().filename().string();
      if (name.find_first_not_of("0123456789") != std::string::npos || name == std::to_string(getpid())) continue;
      if (test::fileContent(entry.path().string() + "/environ").find(mark) == std::string::npos) continue;
      if (const pid_t pid = std::stoi(name); test::processRuns(pid)) found.push_back(pid);
    }
    return found;
  }
  bool nobodyIsLeft() {
    return test::waitFor([&] { return everyone().empty(); });
  }
  // Each command that hangs has a child.
  bool commandsHang(std::size_t count) {
    return test::waitFor([&] {
      const std::vector<pid_t> pids = everyone();
      return static_cast<std::size_t>(
                 std::ranges::count_if(pids, [](pid_t pid) { return test::programName(pid) == "sleep"; })) == count;
    });
  }
  bool waitForCall(const std::string& call) {
    return test::waitFor([&] { return std::ranges::count(calls(), call) > 0; });
  }

 private:
  QProcess m_host;
};

constexpr int kKilled = SIGKILL;
constexpr int kFatalPrecondition = SIGABRT;
constexpr int kQuit = SIGTERM;

std::string nameOf(int end) {
  return end == kKilled ? "Killed" : end == kFatalPrecondition ? "Aborted" : "Quit";
}

class EndOfReadingCommands : public BrewLifetimeTest,
                             public testing::WithParamInterface<std::tuple<int, const char*>> {};

TEST_P(EndOfReadingCommands, ComesWithTheEndOfTheProcess) {
  const auto [end, mode] = GetParam();
  qputenv("FAKEBREW_MODE", mode);
  startHost({QStringLiteral("search"), QStringLiteral("x")});
  ASSERT_TRUE(commandsHang(4)) << "three of the refresh, and the search";
  endHost(end);
  EXPECT_TRUE(nobodyIsLeft());
}

INSTANTIATE_TEST_SUITE_P(Brew, EndOfReadingCommands,
                         testing::Combine(testing::Values(kKilled, kFatalPrecondition, kQuit),
                                          testing::Values("hangs", "deaf")),
                         [](const auto& tested) {
                           return nameOf(std::get<0>(tested.param)) + "_" + std::get<1>(tested.param);
                         });

TEST_F(BrewLifetimeTest, EndsCommandsForDetailsAndInformationWithTheProcess) {
  write("list-formula.txt", "wget\n");
  qputenv("FAKEBREW_MODE_info", "hangs");
  startHost({QStringLiteral("info"), QStringLiteral("x")});
  ASSERT_TRUE(commandsHang(2));
  endHost(kKilled);
  EXPECT_TRUE(nobodyIsLeft());
}

TEST_F(BrewLifetimeTest, LeavesNothingBehindIfNoCommandIsRunning) {
  startHost({QStringLiteral("refresh")});
  ASSERT_TRUE(waitForCall("[outdated][--json]"));
  endHost(kQuit);
  EXPECT_TRUE(nobodyIsLeft());
}

struct Writing {
  const char* command;
  std::string call;
};

class EndOfWritingCommands : public BrewLifetimeTest, public testing::WithParamInterface<std::tuple<int, Writing>> {};

// The command prints more than its pipe holds when nobody reads it any more: neither a broken pipe nor a full one stops
// it.
TEST_P(EndOfWritingCommands, ComesWhenTheyHaveFinishedEvenIfTheProcessIsGone) {
  const auto& [end, writing] = GetParam();
  const bool quits = end == kQuit;
  qputenv("FAKEBREW_MODE_install", quits ? "unwinds" : "finishes");
  qputenv("FAKEBREW_MODE_upgrade", quits ? "unwinds" : "finishes");
  startHost({QString::fromUtf8(writing.command), QStringLiteral("x")});
  ASSERT_TRUE(waitForCall(quits ? "[ready]" : writing.call));
  endHost(end);
  if (quits) {
    ASSERT_TRUE(waitForCall("[interrupted]"));
  }
  ASSERT_EQ(std::ranges::count(calls(), "[finished]"), 0) << "it is still running";
  write("go", "");
  EXPECT_TRUE(waitForCall("[finished]"));
  EXPECT_TRUE(nobodyIsLeft());
  EXPECT_EQ(std::ranges::count(calls(), "[interrupted]"), quits ? 1 : 0)
      << "a second interrupt would stop its clean-up";
}

INSTANTIATE_TEST_SUITE_P(
    Brew, EndOfWritingCommands,
    testing::Combine(testing::Values(kKilled, kFatalPrecondition, kQuit),
                     testing::Values(Writing{"install", "[install][x]"}, Writing{"upgrade", "[upgrade][x]"},
                                     Writing{"upgradeAll", "[upgrade]"})),
    [](const auto& tested) { return nameOf(std::get<0>(tested.param)) + "_" + std::get<1>(tested.param).command; });

// The process was started from a terminal, by the shell that leads the session.
TEST_F(BrewLifetimeTest, GivesCommandsNoTerminalForAPasswordPrompt) {
  write("brew", "#!/bin/sh\nif (: </dev/tty) 2>/dev/null; then a=asks; else a=fails; fi\necho $a >>$FAKEBREW_LOG\n");
  const std::string tool = folder.filePath(QStringLiteral("brew")).toStdString();
  std::filesystem::permissions(tool, std::filesystem::perms::owner_all);
  auto terminal = openPseudoTerminal();
  ASSERT_TRUE(terminal);
  const int slave = terminal.value().slave.get();
  ChildProcess shell({
      .executable = "/bin/sh",
      .arguments = {"-c", ": </dev/tty && echo terminal >>$FAKEBREW_LOG; \"$@\"; :", "sh", ZOLT_BREW_HOST, tool,
                    "refresh"},
      .environment = processEnvironment(),
      .standardInput = slave,
      .standardOutput = slave,
      .standardError = slave,
      .terminal = ChildProcess::Terminal::Controlling,
  });
  ASSERT_TRUE(shell.launch());
  EXPECT_TRUE(test::waitFor([&] { return calls() == Names{"fails", "fails", "fails", "terminal"}; }));
}

}  // namespace
}  // namespace zolt
