#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "platform/MainQueue.h"
#include "session/ControllerProbe.h"
#include "session/SessionProbe.h"
#include "session/TerminalController.h"
#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using namespace std::chrono_literals;
using test::capturedOutput;
using test::ControllerProbe;
using test::gridText;
using test::program;
using test::runLoopFor;
using test::waitFor;
using Statuses = std::vector<std::int32_t>;

// Shells that leave a line in a file each time one starts.
class CountedShell {
 public:
  Shell then(const std::string& rest) const { return test::script("echo run >> " + m_path + "; " + rest); }
  /// The first does one thing, each later one another.
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

// Until after a restart that is to come now would have come: timers of one thread fire in the order of their times,
// however late they are.
void waitPastARestart() {
  runLoopFor(TerminalController::restartDelay + 100ms);
}

TEST(TerminalControllerRestart, FollowsAFailingExitAfterHalfASecond) {
  const CountedShell shell;
  ControllerProbe probe(shell.firstThen("exit 1", "exec " ZOLT_TEST_CHILD " wait"));
  ASSERT_TRUE(probe.hasEnded());
  EXPECT_EQ(probe.statuses, Statuses{1});
  EXPECT_FALSE(probe->ptySession().isRunning());
  ASSERT_TRUE(probe.runs());
  EXPECT_GE(std::chrono::steady_clock::now() - probe.times.front(), 500ms);
  EXPECT_TRUE(probe.gridShows("waiting"));
  EXPECT_EQ(shell.starts(), 2);
}

// A timer a little longer is set when each shell ends: however slow the machine is, the restart comes before it. Three
// shells, for the rare case that this process is stopped between setting the two.
TEST(TerminalControllerRestart, DoesNotFollowLater) {
  EXPECT_EQ(TerminalController::restartDelay, 500ms);
  int timers = 0;
  int restartsInTime = 0;
  int changes = 0;
  ControllerProbe probe(test::script("exit 3"));
  QObject::connect(&*probe, &TerminalController::objectWillChange, [&] { ++changes; });
  QObject::connect(&*probe, &TerminalController::shellEnded, [&] {
    MainQueue::after(MainQueue::Owner(&*probe), TerminalController::restartDelay + 200ms, [&, before = changes] {
      ++timers;
      if (changes > before) ++restartsInTime;
    });
  });
  ASSERT_TRUE(waitFor([&] { return timers >= 3; }));
  EXPECT_GE(restartsInTime, 1);
}

TEST(TerminalControllerRestart, AnnouncesTheTitle) {
  ControllerProbe probe(test::script("exit 3"));
  ASSERT_TRUE(probe.hasEnded());
  runLoopFor(20ms);  // what the output has to announce
  bool isRunning = false;
  const auto connection = QObject::connect(&*probe, &TerminalController::objectWillChange,
                                           [&] { isRunning = isRunning || probe->ptySession().isRunning(); });
  EXPECT_TRUE(waitFor([&] { return isRunning; }));
  QObject::disconnect(connection);
}

TEST(TerminalControllerRestart, GoesOnWithoutLimit) {
  const CountedShell shell;
  ControllerProbe probe(shell.then("exit 3"));
  ASSERT_TRUE(probe.hasEnded(5));
  EXPECT_EQ(probe.statuses, (Statuses{3, 3, 3, 3, 3}));
  EXPECT_EQ(shell.starts(), 5);
  for (std::size_t i = 1; i < probe.times.size(); ++i) {
    EXPECT_GE(probe.times[i] - probe.times[i - 1], 500ms);
  }
}

TEST(TerminalControllerRestart, HappensInTheSameSessionUnderTheSameTitle) {
  const CountedShell shell;
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

TEST(TerminalControllerRestart, ContinuesBelowTheOldOutput) {
  const CountedShell shell;
  ControllerProbe probe(shell.firstThen("stty -opost; printf 'first\\n'; exit 1",
                                        "stty -opost; printf 'second\\n'; exec " ZOLT_TEST_CHILD " wait"));
  EXPECT_TRUE(probe.gridShows("first\nsecond\n"));
}

TEST(TerminalControllerRestart, FollowsADeathByASignal) {
  const CountedShell shell;
  ControllerProbe probe(shell.firstThen("kill -9 $$", "exec " ZOLT_TEST_CHILD " wait"));
  ASSERT_TRUE(probe.hasEnded());
  EXPECT_EQ(probe.statuses, Statuses{SIGKILL});
  EXPECT_TRUE(probe.gridShows("waiting"));
  EXPECT_EQ(shell.starts(), 2);
}

TEST(TerminalControllerRestart, DoesNotFollowAnExitWithStatus0) {
  const CountedShell shell;
  ControllerProbe probe(shell.then("printf 'last screen'; exit 0"));
  ASSERT_TRUE(probe.hasEnded());
  waitPastARestart();
  EXPECT_EQ(shell.starts(), 1);
  EXPECT_FALSE(probe->ptySession().isRunning());
  EXPECT_TRUE(probe.gridShows("last screen"));
  EXPECT_EQ(probe->title(), "Script");
  EXPECT_EQ(capturedOutput([&] { probe->sendInput("nowhere"); }), "");
}

TEST(TerminalControllerRestart, DoesNotHappenWhereItIsNotWanted) {
  const CountedShell shell;
  ControllerProbe probe(shell.then("exit 1"), TerminalController::Restart::Never);
  ASSERT_TRUE(probe.hasEnded());
  waitPastARestart();
  EXPECT_EQ(probe.statuses, Statuses{1});
  EXPECT_EQ(shell.starts(), 1);
}

TEST(TerminalControllerRestart, IsDroppedWithTheController) {
  const CountedShell shell;
  {
    ControllerProbe probe(shell.then("exit 1"));
    ASSERT_TRUE(probe.hasEnded());
  }
  waitPastARestart();
  EXPECT_EQ(shell.starts(), 1);
}

TEST(TerminalControllerRestart, ThatFailsIsReportedAndNotRepeated) {
  const QTemporaryDir folder;
  const std::string path = folder.path().toStdString() + "/shell";
  const std::string make = "printf '#!/bin/sh\\nrm " + path + "\\nexit 1\\n' > " + path + " && chmod 700 " + path;
  ASSERT_EQ(std::system(make.c_str()), 0);
  std::unique_ptr<ControllerProbe> probe;
  EXPECT_EQ(capturedOutput([&] {
              probe = std::make_unique<ControllerProbe>(
                  Shell{.name = "Once", .executable = path, .args = {}, .icon = "terminal"});
              EXPECT_TRUE(probe->hasEnded());
              waitPastARestart();
              waitPastARestart();
            }),
            "Terminal exited with code: 1\n"
            "Failed to start process: No such file or directory\n"
            "Failed to start PTY session\n");
  EXPECT_EQ((*probe)->title(), "Once");
  EXPECT_FALSE((*probe)->ptySession().isRunning());
}

TEST(TerminalControllerExit, IsPrintedWithItsStatus) {
  for (const auto& [mode, status] : {std::pair{"0", "0"}, std::pair{"17", "17"}}) {
    EXPECT_EQ(capturedOutput([&, exit = mode] {
                ControllerProbe probe(program({"exit", exit}), TerminalController::Restart::Never);
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
