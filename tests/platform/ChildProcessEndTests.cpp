#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/ChildProcess.h"
#include "platform/ChildRun.h"
#include "platform/Pipe.h"
#include "platform/PseudoTerminal.h"
#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using test::ChildRun;
using test::testChild;
using test::waitFor;
using Reason = ChildProcess::Reason;

TEST(ChildProcessTerminate, EndsTheChild) {
  ChildRun run(testChild({"wait"}));
  EXPECT_TRUE(run.says("waiting\n"));
  run.child().terminate();
  EXPECT_TRUE(run.ends());
  EXPECT_EQ(run.child().terminationStatus(), SIGTERM);
  EXPECT_EQ(run.child().terminationReason(), Reason::Signal);
}

TEST(ChildProcessTerminate, DoesNothingBeforeLaunchOrAfterExit) {
  ChildProcess never(testChild({"wait"}));
  never.terminate();
  never.killAfter(0ms);
  ChildRun run(testChild({"exit", "4"}));
  EXPECT_TRUE(run.ends());
  run.child().terminate();
  run.child().sendSignal(SIGKILL);
  EXPECT_EQ(run.child().terminationStatus(), 4);
}

TEST(ChildProcessKillAfter, KillsADeafChildAfterTheGracePeriod) {
  ChildRun run(testChild({"deaf"}));
  EXPECT_TRUE(run.says("deaf\n"));
  const auto asked = Clock::now();
  run.child().terminate();
  run.child().killAfter(150ms);
  EXPECT_TRUE(run.ends());
  EXPECT_GE(Clock::now() - asked, 150ms);
  EXPECT_EQ(run.child().terminationStatus(), SIGKILL);
}

TEST(ChildProcessKillAfter, KillsADeafChildWhoseObjectIsGone) {
  pid_t pid = 0;
  {
    ChildRun run(testChild({"deaf"}));
    EXPECT_TRUE(run.says("deaf\n"));
    pid = run.child().pid();
    run.child().killAfter(20ms);
  }
  EXPECT_TRUE(waitFor([&] { return !test::processExists(pid); }));
}

TEST(ChildProcessKillAfter, KillsTheProcessGroupOfASessionLeader) {
  auto terminal = openPseudoTerminal();
  ASSERT_TRUE(terminal);
  const std::string deaf = std::string(ZOLT_TEST_CHILD) + " deaf";
  ChildProcess::Request request = test::shellScript("trap '' HUP TERM; " + deaf + " & " + deaf);
  request.standardInput = request.standardOutput = request.standardError = terminal.value().slave.get();
  request.terminal = ChildProcess::Terminal::Controlling;
  ChildProcess leader(std::move(request));
  ASSERT_TRUE(leader.launch());
  EXPECT_EQ(test::readAll(terminal.value().master.get(), 12), "deaf\r\ndeaf\r\n");
  const std::vector<pid_t> members = test::childProcesses(leader.pid());
  ASSERT_EQ(members.size(), 2U);
  leader.killAfter(1ms);
  EXPECT_TRUE(waitFor([&] { return !leader.isRunning(); }));
  for (const pid_t member : members) {
    EXPECT_TRUE(waitFor([&] { return !test::processRuns(member); }));
  }
}

TEST(ChildProcessGroup, CanBeSignalledUntilItIsReleased) {
  auto pipe = makePipe();
  ASSERT_TRUE(pipe);
  ChildProcess::Request request = test::shellScript(std::string(ZOLT_TEST_CHILD) + " deaf & exit 3");
  request.standardOutput = pipe.value().writer.get();
  request.group = ChildProcess::kOwnGroup;
  request.keepsGroup = true;
  ChildProcess leader(std::move(request));
  ASSERT_TRUE(leader.launch());
  leader.waitUntilExit();
  EXPECT_EQ(leader.terminationStatus(), 3);
  EXPECT_EQ(leader.terminationReason(), Reason::Exit);
  EXPECT_TRUE(test::processExists(leader.pid())) << "not reaped, so its PID is not reused";
  EXPECT_EQ(test::readAll(pipe.value().reader.get(), 5), "deaf\n");
  pipe.value().writer.reset();
  leader.sendSignalToGroup(SIGKILL);
  EXPECT_EQ(test::readAll(pipe.value().reader.get()), "") << "the last process that held the pipe is gone";
  leader.release();
  EXPECT_FALSE(test::processExists(leader.pid()));
  leader.sendSignalToGroup(SIGKILL);
  leader.release();
}

TEST(ChildProcessGroup, IsGivenUpOnExitIfReleasedBefore) {
  ChildProcess::Request request = testChild({"wait"});
  request.group = ChildProcess::kOwnGroup;
  request.keepsGroup = true;
  ChildProcess leader(std::move(request));
  ASSERT_TRUE(leader.launch());
  leader.release();
  EXPECT_FALSE(leader.waitUntilExit(1ms));
  leader.sendSignalToGroup(SIGKILL);
  EXPECT_TRUE(leader.waitUntilExit(20s));
  EXPECT_EQ(leader.terminationStatus(), SIGKILL);
  EXPECT_EQ(leader.terminationReason(), Reason::Signal);
  EXPECT_FALSE(test::processExists(leader.pid()));
}

TEST(ChildProcessEndRemaining, KillsADeafChildWithoutTheMainLoop) {
  ChildRun run(testChild({"deaf"}));
  EXPECT_TRUE(run.says("deaf\n"));
  run.child().killAfter(1h);
  const auto asked = Clock::now();
  ChildProcess::endRemaining(60ms);
  EXPECT_GE(Clock::now() - asked, 60ms);
  EXPECT_FALSE(run.child().isRunning());
  EXPECT_EQ(run.child().terminationStatus(), SIGKILL);
}

TEST(ChildProcessEndRemaining, LetsAChildThatIsExitingFinish) {
  ChildRun run(testChild({"wait"}));
  EXPECT_TRUE(run.says("waiting\n"));
  run.child().terminate();
  run.child().killAfter(1h);
  ChildProcess::endRemaining(20s);
  EXPECT_FALSE(run.child().isRunning());
  EXPECT_EQ(run.child().terminationStatus(), SIGTERM);
}

TEST(ChildProcessEndRemaining, LeavesAChildThatWasNotAskedToEndAlone) {
  ChildRun run(testChild({"wait"}));
  EXPECT_TRUE(run.says("waiting\n"));
  ChildProcess::endRemaining(1ms);
  EXPECT_TRUE(run.child().isRunning());
  run.child().terminate();
  EXPECT_TRUE(run.ends());
}

TEST(ChildProcess, IsReapedEvenIfItsObjectIsGone) {
  pid_t pid = 0;
  {
    ChildRun run(testChild({"wait"}));
    EXPECT_TRUE(run.says("waiting\n"));
    pid = run.child().pid();
  }
  kill(pid, SIGKILL);
  EXPECT_TRUE(waitFor([&] { return !test::processExists(pid); }));
}

TEST(ChildProcess, LeavesNoZombieAfterManyChildren) {
  for (int i = 0; i < 60; ++i) {
    ChildRun run(testChild({"exit", "0"}));
    EXPECT_TRUE(run.launched);
  }
  EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); }));
  EXPECT_TRUE(test::zombies().empty());
}

TEST(ChildProcess, CanBeLaunchedFromSeveralThreadsAtOnce) {
  std::vector<std::thread> threads;
  std::atomic<int> right = 0;
  for (int thread = 0; thread < 4; ++thread) {
    threads.emplace_back([&right, thread] {
      for (int i = 0; i < 15; ++i) {
        const std::string text = std::to_string(thread * 100 + i);
        if (test::outputOf(testChild({"echo", text})) == text + "\n") ++right;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  EXPECT_EQ(right, 60);
  EXPECT_TRUE(waitFor([] { return test::childProcesses().empty(); }));
}

TEST(ChildProcess, LeavesNoDescriptorBehind) {
  static_cast<void>(test::outputOf(testChild({"exit", "0"})));
  const std::size_t before = test::descriptorsAtRest();
  for (int i = 0; i < 10; ++i) {
    static_cast<void>(test::outputOf(testChild({"echo", "x"})));
  }
  EXPECT_TRUE(waitFor([&] { return test::openDescriptors() == before; }));
}

}  // namespace
}  // namespace zolt
