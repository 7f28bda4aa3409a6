#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QThread>
#include <csignal>
#include <memory>
#include <string>
#include <vector>

#include "platform/FileHandleProbe.h"
#include "platform/MainQueue.h"
#include "session/PTYSession.h"
#include "session/SessionProbe.h"
#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using test::capturedOutput;
using test::program;
using test::runLoopFor;
using test::SessionProbe;
using test::waitFor;
using Statuses = std::vector<std::int32_t>;

bool allChildrenAreGone() {
  return waitFor([] { return test::childProcesses().empty(); });
}

TEST(PTYSessionExit, IsReportedWithTheStatus) {
  for (const int status : {0, 1, 42}) {
    SessionProbe probe;
    ASSERT_TRUE(probe.session.start(program({"exit", std::to_string(status)})));
    EXPECT_TRUE(probe.ends());
    EXPECT_EQ(probe.exits, Statuses{status});
    EXPECT_EQ(probe.session.terminationReason(), ChildProcess::Reason::Exit);
  }
}

TEST(PTYSessionExit, IsReportedWithTheSignalThatKilledTheShell) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"crash"})));
  EXPECT_TRUE(probe.ends());
  EXPECT_EQ(probe.exits, Statuses{SIGSEGV});
  EXPECT_EQ(probe.session.terminationReason(), ChildProcess::Reason::Signal);
}

TEST(PTYSessionExit, IsReportedOnTheMainThreadWhenTheSessionHasStopped) {
  std::string order;
  SessionProbe probe;
  bool runningAtExit = true;
  bool elsewhere = false;
  ASSERT_TRUE(probe.session.start(program({"exit", "0"})));
  QObject::connect(&probe.session, &PTYSession::objectWillChange, [&] { order += "change "; });
  probe.session.onExit = [&](std::int32_t) {
    order += "exit";
    runningAtExit = probe.session.isRunning();
    elsewhere = QThread::currentThread() != QCoreApplication::instance()->thread();
  };
  EXPECT_TRUE(waitFor([&] { return order.ends_with("exit"); }));
  EXPECT_EQ(order, "change exit");
  EXPECT_FALSE(runningAtExit);
  EXPECT_FALSE(elsewhere);
}

TEST(PTYSessionExit, NeedsNoHandler) {
  PTYSession session;
  ASSERT_TRUE(session.start(program({"exit", "1"})));
  EXPECT_TRUE(waitFor([&] { return !session.isRunning(); }));
}

TEST(PTYSessionExit, IsNotConcludedFromTheEndOfTheOutput) {
  SessionProbe probe;
  ASSERT_TRUE(
      probe.session.start(test::script("echo closing; exec </dev/null >/dev/null 2>&1; trap 'exit 9' TERM; "
                                       "while :; do sleep 0.05; done")));
  ASSERT_TRUE(probe.shows("closing"));
  runLoopFor(std::chrono::milliseconds(100));
  EXPECT_TRUE(probe.session.isRunning());
  EXPECT_TRUE(probe.exits.empty());
}

TEST(PTYSessionExit, LeavesTheTerminalOpenForSilentWrites) {
  SessionProbe probe;
  EXPECT_EQ(probe.outputOf(program({"echo", "bye"})), "bye\n");
  EXPECT_EQ(capturedOutput([&] {
              probe.session.write("after the end");
              runLoopFor(std::chrono::milliseconds(30));
            }),
            "");
  EXPECT_TRUE(probe.shows("after the end")) << "the open terminal echoes";
  EXPECT_EQ(probe.exits, Statuses{0});
}

TEST(PTYSessionExit, MakesSignalsGoNowhere) {
  SessionProbe probe;
  EXPECT_EQ(probe.outputOf(program({"exit", "0"})), "");
  probe.session.sendSignal(SIGTERM);
  EXPECT_EQ(probe.exits.size(), 1U);
}

TEST(PTYSessionExit, KeepsBothEndsOpenUntilTheSessionIsReleased) {
  const std::size_t before = test::descriptorsAtRest();
  auto probe = std::make_unique<SessionProbe>();
  probe->outputOf(program({"exit", "0"}));
  EXPECT_EQ(test::descriptorsAtRest(), before + 2);
  probe.reset();
  EXPECT_TRUE(waitFor([&] { return test::openDescriptors() == before; }));
}

TEST(PTYSessionRestart, RunsOnAFreshTerminalWithTheSameCallbacks) {
  SessionProbe probe;
  EXPECT_EQ(probe.outputOf(program({"echo", "first"})), "first\n");
  const std::size_t open = test::descriptorsAtRest();
  EXPECT_EQ(probe.outputOf(test::script("stty -echo; echo second; exit 3")), "second\n");
  EXPECT_EQ(probe.outputOf(test::script("stty -a | grep -c -w -- -echo; echo third")), "0\nthird\n");
  EXPECT_EQ(probe.exits, (Statuses{0, 3, 0}));
  EXPECT_TRUE(waitFor([&] { return test::openDescriptors() == open; })) << "the old terminals are closed";
}

TEST(PTYSessionRestart, CanBeDoneInTheExitHandler) {
  SessionProbe probe;
  int starts = 0;
  probe.session.onExit = [&](std::int32_t status) {
    probe.exits.push_back(status);
    ++starts;
    EXPECT_TRUE(starts == 5 || probe.session.start(program({"exit", std::to_string(starts)})));
  };
  ASSERT_TRUE(probe.session.start(program({"exit", "0"})));
  EXPECT_TRUE(probe.ends(5));
  EXPECT_EQ(probe.exits, (Statuses{0, 1, 2, 3, 4}));
}

TEST(PTYSessionTerminate, EndsTheShellAndClosesTheTerminal) {
  const std::size_t before = test::descriptorsAtRest();
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"wait"})));
  ASSERT_TRUE(probe.shows("waiting"));
  probe.session.terminate();
  EXPECT_FALSE(probe.session.isRunning());
  EXPECT_TRUE(allChildrenAreGone());
  EXPECT_TRUE(waitFor([&] { return test::openDescriptors() == before; }));
  EXPECT_EQ(capturedOutput([&] { probe.session.write("nowhere"); }), "");
}

TEST(PTYSessionTerminate, StillReportsTheExitOfTheShellItEnded) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"wait"})));
  ASSERT_TRUE(probe.shows("waiting"));
  probe.session.terminate();
  EXPECT_TRUE(probe.ends());
  EXPECT_EQ(probe.exits, Statuses{SIGTERM});
}

TEST(PTYSessionTerminate, DoesNothingMoreTheSecondTime) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"wait"})));
  ASSERT_TRUE(probe.shows("waiting"));
  probe.session.terminate();
  probe.session.terminate();
  EXPECT_FALSE(probe.session.isRunning());
  EXPECT_TRUE(probe.ends());
  runLoopFor(std::chrono::milliseconds(20));
  EXPECT_EQ(probe.exits.size(), 1U);
}

TEST(PTYSessionTerminate, CanBeFollowedByAStart) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"wait"})));
  probe.session.terminate();
  EXPECT_TRUE(probe.ends());
  EXPECT_EQ(probe.outputOf(program({"echo", "again"})), "again\n");
}

TEST(PTYSessionTerminate, StopsTheDeliveryOfOutput) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"flood", "0"})));
  ASSERT_TRUE(probe.shows("aaaa"));
  probe.session.terminate();
  // What had been submitted for delivery still comes, and nothing after it.
  bool reached = false;
  MainQueue::async([&] { reached = true; });
  ASSERT_TRUE(waitFor([&] { return reached; }));
  const std::size_t size = probe.output.size();
  EXPECT_TRUE(allChildrenAreGone());
  runLoopFor(std::chrono::milliseconds(30));
  EXPECT_EQ(probe.output.size(), size);
}

TEST(PTYSessionRelease, EndsTheShellAndLeavesNothingBehind) {
  const std::size_t before = test::descriptorsAtRest();
  for (const char* mode : {"wait", "cat", "sleeper", "size"}) {
    SessionProbe probe;
    ASSERT_TRUE(probe.session.start(program({mode})));
    ASSERT_TRUE(waitFor([&] { return !probe.output.empty(); }));
  }
  EXPECT_TRUE(allChildrenAreGone());
  EXPECT_TRUE(test::zombies().empty());
  EXPECT_TRUE(waitFor([&] { return test::openDescriptors() == before; }));
}

TEST(PTYSessionRelease, EndsTheShellInTheMiddleOfAFlood) {
  {
    SessionProbe probe;
    ASSERT_TRUE(probe.session.start(program({"flood", "0"})));
    ASSERT_TRUE(probe.shows("zzzz"));
  }
  EXPECT_TRUE(allChildrenAreGone());
}

TEST(PTYSessionRelease, EndsTheShellWhileReadingWaitsForTheOutputToBeTaken) {
  std::vector<Bytes> held;
  std::size_t heldBytes = 0;
  {
    PTYSession session;
    session.onOutput = [&](const Bytes& chunk) {
      held.push_back(chunk);
      heldBytes += chunk.size();
    };
    ASSERT_TRUE(session.start(program({"flood", "0"})));
    ASSERT_TRUE(waitFor([&] { return heldBytes >= FileHandle::inFlightLimitBytes; }));
  }
  EXPECT_TRUE(allChildrenAreGone());
  held.clear();
}

TEST(PTYSessionRelease, DropsPendingOutputAndTheExit) {
  bool called = false;
  {
    PTYSession session;
    session.onOutput = [&](const Bytes&) { called = true; };
    session.onExit = [&](std::int32_t) { called = true; };
    ASSERT_TRUE(session.start(program({"echo", "unheard"})));
    // Without the loop: the output and the end are waiting to be delivered when the session goes.
    while (!test::childProcesses().empty()) {
    }
  }
  runLoopFor(std::chrono::milliseconds(50));
  EXPECT_FALSE(called);
}

TEST(PTYSessionRelease, KillsADeafShellInTheEnd) {
  {
    SessionProbe probe;
    ASSERT_TRUE(probe.session.start(program({"deaf"})));
    ASSERT_TRUE(probe.shows("deaf"));
  }
  EXPECT_FALSE(test::childProcesses().empty());
  EXPECT_TRUE(allChildrenAreGone());
}

TEST(PTYSessionRelease, KillsADeafShellAlsoWhenTheProgramEndsFirst) {
  {
    SessionProbe probe;
    ASSERT_TRUE(probe.session.start(program({"deaf"})));
    ASSERT_TRUE(probe.shows("deaf"));
  }
  ChildProcess::endRemaining(std::chrono::milliseconds(10));
  EXPECT_TRUE(test::childProcesses().empty());
}

}  // namespace
}  // namespace zolt
