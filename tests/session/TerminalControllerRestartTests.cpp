#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "session/ControllerProbe.h"
#include "session/SessionProbe.h"
#include "session/TerminalController.h"
#include "support/ManualClock.h"
#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using namespace std::chrono_literals;
using test::capturedOutput;
using test::ControllerProbe;
using test::gridText;
using test::program;
using Restart = TerminalController::Restart;
using Statuses = std::vector<std::int32_t>;

// Shells that leave a line in a file each time one starts.
class CountedShell {
 public:
  Shell then(const std::string& rest) const { return test::script("echo run >> " + m_path + "; " + rest); }
  /// The first shell runs `first`, each later one `later`.
  Shell firstThen(const std::string& first, const std::string& later) const {
    return then("if [ $(wc -l < " + m_path + ") -eq 1 ]; then " + first + "; fi; " + later);
  }
  long starts() const {
    const std::string lines = test::fileContent(m_path);
    return std::count(lines.begin(), lines.end(), '\n');
  }

 private:
  QTemporaryDir m_folder;
  std::string m_path = m_folder.path().toStdString() + "/starts";
};

// A manual clock stands still until a test advances it, however long the test takes.
class TerminalControllerRestart : public testing::Test {
 protected:
  test::ManualClock clock;
  const CountedShell shell;
};

TEST_F(TerminalControllerRestart, FollowsAFailingExitAfterHalfASecond) {
  ControllerProbe probe(shell.firstThen("exit 1", "exec " ZOLT_TEST_CHILD " wait"), Restart::AfterFailure, clock);
  ASSERT_TRUE(probe.hasEnded());
  EXPECT_EQ(probe.statuses, Statuses{1});
  clock.advance(500ms - 1us);
  EXPECT_FALSE(probe->ptySession().isRunning());
  clock.advance(1us);
  ASSERT_TRUE(probe->ptySession().isRunning());
  EXPECT_TRUE(probe.gridShows("waiting"));
  EXPECT_EQ(shell.starts(), 2);
}

TEST_F(TerminalControllerRestart, AnnouncesTheTitle) {
  ControllerProbe probe(shell.then("exit 3"), Restart::AfterFailure, clock);
  ASSERT_TRUE(probe.hasEnded());
  // Only the restart announces something now: output does so a turn of the event loop later.
  int changes = 0;
  QObject::connect(&*probe, &TerminalController::objectWillChange, [&] { ++changes; });
  clock.advance(TerminalController::restartDelay);
  EXPECT_EQ(changes, 1);
}

// On the real clock. It may be slow, but never early.
TEST_F(TerminalControllerRestart, GoesOnWithoutLimit) {
  ControllerProbe probe(shell.then("exit 3"));
  ASSERT_TRUE(probe.hasEnded(5));
  EXPECT_EQ(probe.statuses, (Statuses{3, 3, 3, 3, 3}));
  EXPECT_EQ(shell.starts(), 5);
  for (std::size_t i = 1; i < probe.times.size(); ++i) {
    EXPECT_GE(probe.times[i] - probe.times[i - 1], 500ms);
  }
}

TEST_F(TerminalControllerRestart, HappensInTheSameSessionUnderTheSameTitle) {
  ControllerProbe probe(shell.firstThen("exit 1", "exec " ZOLT_TEST_CHILD " wait"));
  const PTYSession* session = &probe->ptySession();
  const QUuid id = probe->id();
  ASSERT_TRUE(probe.hasEnded());
  EXPECT_EQ(probe->title(), "Script");
  ASSERT_TRUE(probe.runs());
  EXPECT_EQ(&probe->ptySession(), session);
  EXPECT_EQ(probe->title(), "Script");
  EXPECT_EQ(probe->id(), id);
}

TEST_F(TerminalControllerRestart, ContinuesBelowTheOldOutput) {
  ControllerProbe probe(shell.firstThen("stty -opost; printf 'first\\n'; exit 1",
                                        "stty -opost; printf 'second\\n'; exec " ZOLT_TEST_CHILD " wait"));
  EXPECT_TRUE(probe.gridShows("first\nsecond\n"));
}

TEST_F(TerminalControllerRestart, FollowsADeathByASignal) {
  ControllerProbe probe(shell.firstThen("kill -9 $$", "exec " ZOLT_TEST_CHILD " wait"));
  ASSERT_TRUE(probe.hasEnded());
  EXPECT_EQ(probe.statuses, Statuses{SIGKILL});
  EXPECT_TRUE(probe.gridShows("waiting"));
  EXPECT_EQ(shell.starts(), 2);
}

TEST_F(TerminalControllerRestart, DoesNotFollowAnExitWithStatus0) {
  ControllerProbe probe(shell.then("printf 'last screen'; exit 0"), Restart::AfterFailure, clock);
  ASSERT_TRUE(probe.hasEnded());
  EXPECT_EQ(clock.untilNext(), std::nullopt);
  EXPECT_FALSE(probe->ptySession().isRunning());
  EXPECT_TRUE(probe.gridShows("last screen"));
  EXPECT_EQ(probe->title(), "Script");
  EXPECT_EQ(capturedOutput([&] { probe->sendInput("nowhere"); }), "");
}

TEST_F(TerminalControllerRestart, DoesNotHappenWhereItIsTurnedOff) {
  ControllerProbe probe(shell.then("exit 1"), Restart::Never, clock);
  ASSERT_TRUE(probe.hasEnded());
  EXPECT_EQ(probe.statuses, Statuses{1});
  EXPECT_EQ(clock.untilNext(), std::nullopt);
}

TEST_F(TerminalControllerRestart, IsDroppedWithTheController) {
  {
    ControllerProbe probe(shell.then("exit 1"), Restart::AfterFailure, clock);
    ASSERT_TRUE(probe.hasEnded());
    ASSERT_EQ(clock.untilNext(), TerminalController::restartDelay);
  }
  EXPECT_EQ(clock.untilNext(), std::nullopt);
}

TEST_F(TerminalControllerRestart, IsReportedAndNotTriedAgainWhenItFails) {
  const QTemporaryDir folder;
  const std::string path = folder.path().toStdString() + "/shell";
  const std::string make = "printf '#!/bin/sh\\nrm " + path + "\\nexit 1\\n' > " + path + " && chmod 700 " + path;
  ASSERT_EQ(std::system(make.c_str()), 0);
  std::unique_ptr<ControllerProbe> probe;
  EXPECT_EQ(capturedOutput([&] {
              probe = std::make_unique<ControllerProbe>(
                  Shell{.name = "Once", .executable = path, .args = {}, .icon = "terminal"}, Restart::AfterFailure,
                  clock);
              EXPECT_TRUE(probe->hasEnded());
              clock.advance(TerminalController::restartDelay);
            }),
            "Terminal exited with code: 1\n"
            "Failed to start process: No such file or directory\n"
            "Failed to start PTY session\n");
  EXPECT_EQ(clock.untilNext(), std::nullopt);
  EXPECT_EQ((*probe)->title(), "Once");
  EXPECT_FALSE((*probe)->ptySession().isRunning());
}

TEST(TerminalControllerExit, IsPrintedWithItsStatus) {
  for (const auto& [mode, status] : {std::pair{"0", "0"}, std::pair{"17", "17"}}) {
    EXPECT_EQ(capturedOutput([&, exit = mode] {
                ControllerProbe probe(program({"exit", exit}), Restart::Never);
                EXPECT_TRUE(probe.hasEnded());
              }),
              std::string("Terminal exited with code: ") + status + "\n");
  }
}

TEST(TerminalControllerExit, IsHandledATurnAfterTheSessionReportedIt) {
  ControllerProbe probe(program({"wait"}));
  ASSERT_TRUE(probe.gridShows("waiting"));
  probe->ptySession().onExit(0);
  EXPECT_TRUE(probe.statuses.empty());
  EXPECT_TRUE(probe.hasEnded());
  EXPECT_EQ(probe.statuses, Statuses{0});
}

}  // namespace
}  // namespace zolt
