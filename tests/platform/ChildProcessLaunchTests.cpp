#include <gtest/gtest.h>
#include <sys/stat.h>

#include <QTemporaryDir>
#include <atomic>
#include <csignal>
#include <fstream>
#include <string>
#include <thread>

#include "platform/ChildProcess.h"
#include "platform/ChildRun.h"
#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using test::ChildRun;
using test::outputOf;
using test::shellScript;
using test::testChild;
using test::waitFor;
using Reason = ChildProcess::Reason;

// The reason why the program at `path` cannot be launched; empty if it can.
std::string launchError(const std::string& path) {
  ChildProcess child({.executable = path, .arguments = {}, .environment = {}});
  std::atomic<bool> called = false;
  child.setTerminationHandler([&] { called = true; });
  const auto launched = child.launch();
  EXPECT_EQ(child.pid(), 0);
  EXPECT_FALSE(child.isRunning());
  EXPECT_FALSE(called);
  return launched ? "" : launched.reason();
}

TEST(ChildProcessLaunch, FailsForAMissingExecutable) {
  EXPECT_EQ(launchError("/nonexistent/shell"), "No such file or directory");
  EXPECT_EQ(launchError(""), "No such file or directory");
}

TEST(ChildProcessLaunch, FailsForADirectory) {
  EXPECT_EQ(launchError("/tmp"), "Permission denied");
}

TEST(ChildProcessLaunch, FailsForAFileWithoutExecutePermission) {
  const QTemporaryDir folder;
  const std::string path = folder.path().toStdString() + "/text";
  std::ofstream(path) << "#!/bin/sh\n";
  chmod(path.c_str(), 0600);
  EXPECT_EQ(launchError(path), "Permission denied");
}

TEST(ChildProcessLaunch, LeavesNoProcessBehindWhenItFails) {
  for (int i = 0; i < 20; ++i) {
    launchError("/nonexistent/shell");
  }
  EXPECT_TRUE(test::childProcesses().empty());
}

TEST(ChildProcessLaunch, DoesNotSearchThePath) {
  EXPECT_EQ(launchError("sh"), "No such file or directory");
}

TEST(ChildProcessLaunch, PassesTheArgumentsUnchanged) {
  EXPECT_EQ(outputOf(testChild({"echo", "two words", "", "$HOME *", "\xC3\xA9"})), "two words\n\n$HOME *\n\xC3\xA9\n");
}

TEST(ChildProcessLaunch, GivesTheProgramItsPathAsItsName) {
  EXPECT_EQ(outputOf(shellScript("echo $0")), "/bin/sh\n");
}

TEST(ChildProcessStatus, IsTheExitStatusOfAProgramThatExits) {
  for (const int status : {0, 1, 7, 255}) {
    ChildRun run(testChild({"exit", std::to_string(status)}));
    ASSERT_TRUE(run.launched);
    EXPECT_GT(run.child().pid(), 0);
    EXPECT_TRUE(run.ends());
    EXPECT_EQ(run.child().terminationStatus(), status);
    EXPECT_EQ(run.child().terminationReason(), Reason::Exit);
  }
}

TEST(ChildProcessStatus, IsTheNumberOfTheSignalThatKilledTheChild) {
  for (const int signal : {SIGKILL, SIGUSR1, SIGINT}) {
    ChildRun run(testChild({"wait"}));
    EXPECT_TRUE(run.says("waiting\n"));
    run.child().sendSignal(signal);
    EXPECT_TRUE(run.ends());
    EXPECT_EQ(run.child().terminationStatus(), signal);
    EXPECT_EQ(run.child().terminationReason(), Reason::Signal);
  }
}

TEST(ChildProcessStatus, DistinguishesACrashFromAnExit) {
  ChildRun run(testChild({"crash"}));
  EXPECT_TRUE(run.ends());
  EXPECT_EQ(run.child().terminationStatus(), SIGSEGV);
  EXPECT_EQ(run.child().terminationReason(), Reason::Signal);
}

TEST(ChildProcessStatus, IsZeroWhileTheChildRuns) {
  ChildRun run(testChild({"wait"}));
  EXPECT_TRUE(run.says("waiting\n"));
  EXPECT_TRUE(run.child().isRunning());
  EXPECT_EQ(run.child().terminationStatus(), 0);
  run.child().terminate();
  EXPECT_TRUE(run.ends());
}

// This program may have inherited an ignored SIGCHLD; the system then reaps children by itself.
TEST(ChildProcessStatus, IsKnownEvenIfSigchldWasIgnoredAtStartUp) {
  const auto previous = std::signal(SIGCHLD, SIG_IGN);
  ChildRun run(testChild({"exit", "7"}));
  EXPECT_TRUE(run.ends());
  EXPECT_EQ(run.child().terminationStatus(), 7);
  std::signal(SIGCHLD, previous);
}

TEST(ChildProcessTerminationHandler, RunsOnceOnABackgroundThreadAfterTheChildIsReaped) {
  ChildProcess child(testChild({"exit", "3"}));
  std::atomic<int> calls = 0;
  std::atomic<bool> elsewhere = false;
  std::atomic<bool> gone = false;
  std::atomic<int> status = -1;
  child.setTerminationHandler([&, main = std::this_thread::get_id()] {
    elsewhere = std::this_thread::get_id() != main;
    gone = !child.isRunning() && !test::processExists(child.pid());
    status = child.terminationStatus();
    ++calls;
  });
  ASSERT_TRUE(child.launch());
  EXPECT_TRUE(waitFor([&] { return calls == 1; }));
  EXPECT_TRUE(elsewhere);
  EXPECT_TRUE(gone);
  EXPECT_EQ(status, 3);
  test::runLoopFor(std::chrono::milliseconds(20));
  EXPECT_EQ(calls, 1);
}

TEST(ChildProcessTerminationHandler, IsReleasedAfterItHasRun) {
  const auto held = std::make_shared<int>();
  ChildRun run(testChild({"exit", "0"}));
  ChildProcess child(testChild({"exit", "0"}));
  child.setTerminationHandler([held] {});
  ASSERT_TRUE(child.launch());
  EXPECT_TRUE(waitFor([&] { return held.use_count() == 1; }));
}

TEST(ChildProcessTerminationHandler, MayHoldTheLastReferenceToTheChild) {
  std::atomic<int> status = -1;
  {
    const auto child = std::make_shared<ChildProcess>(testChild({"exit", "5"}));
    child->setTerminationHandler([child, &status] { status = child->terminationStatus(); });
    ASSERT_TRUE(child->launch());
  }
  EXPECT_TRUE(waitFor([&] { return status == 5; }));
}

}  // namespace
}  // namespace zolt
