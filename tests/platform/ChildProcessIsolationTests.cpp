#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <csignal>
#include <string>
#include <thread>
#include <vector>

#include "platform/ChildProcess.h"
#include "platform/ChildRun.h"
#include "platform/PseudoTerminal.h"

namespace zolt {
namespace {

using namespace std::string_literals;
using test::outputOf;
using test::shellScript;
using test::testChild;

// The helper program's output on a pseudo-terminal that is its controlling terminal.
std::string outputOnTerminal(const std::string& mode) {
  auto terminal = openPseudoTerminal();
  if (!terminal) return terminal.reason();
  ChildProcess::Request request = testChild({mode});
  const int slave = terminal.value().slave.get();
  request.standardInput = request.standardOutput = request.standardError = slave;
  request.terminal = ChildProcess::Terminal::Controlling;
  ChildProcess child(std::move(request));
  if (const auto launched = child.launch(); !launched) return launched.reason();
  terminal.value().slave.reset();
  std::string text = test::readAll(terminal.value().master.get());
  std::erase(text, '\r');
  return text;
}

TEST(ChildProcessDescriptors, AreTheThreeStandardStreams) {
  EXPECT_EQ(outputOf(testChild({"descriptors"})), "0\n1\n2\n");
}

TEST(ChildProcessDescriptors, DoNotIncludeOursThatLackCloseOnExec) {
  std::vector<Descriptor> ours;
  for (int i = 0; i < 100; ++i) {
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    ours.emplace_back(ends[0]);
    ours.emplace_back(ends[1]);
  }
  EXPECT_EQ(outputOf(testChild({"descriptors"})), "0\n1\n2\n");
  EXPECT_EQ(outputOnTerminal("descriptors"), "0\n1\n2\n");
}

TEST(ChildProcessDescriptors, DoNotIncludeOursWhenSeveralThreadsOpenAndLaunch) {
  std::vector<std::thread> threads;
  std::array<std::string, 4> wrong;
  for (std::string& output : wrong) {
    threads.emplace_back([&output] {
      for (int i = 0; i < 15 && output.empty(); ++i) {
        const std::string seen = outputOnTerminal("descriptors");
        if (seen != "0\n1\n2\n") output = seen;
      }
    });
  }
  for (std::thread& thread : threads) {
    thread.join();
  }
  for (const std::string& output : wrong) {
    EXPECT_EQ(output, "");
  }
}

TEST(ChildProcessDescriptors, MayBeOurOwnStandardStreamsInAnotherOrder) {
  ChildProcess::Request request = shellScript("echo out; echo error >&2");
  request.standardOutput = STDERR_FILENO;
  request.standardError = STDOUT_FILENO;
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  ChildProcess child(std::move(request));
  EXPECT_TRUE(child.launch());
  EXPECT_TRUE(test::waitFor([&] { return !child.isRunning(); }));
  EXPECT_EQ(testing::internal::GetCapturedStdout(), "error\n");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "out\n");
}

TEST(ChildProcessSignals, AreNeitherBlockedNorIgnoredEvenIfOursAre) {
  sigset_t blocked;
  sigset_t before;
  sigemptyset(&blocked);
  for (const int signal : {SIGINT, SIGTERM, SIGWINCH, SIGRTMIN + 1}) {
    sigaddset(&blocked, signal);
  }
  pthread_sigmask(SIG_BLOCK, &blocked, &before);
  std::vector<std::pair<int, sighandler_t>> dispositions;
  for (const int signal : {SIGPIPE, SIGHUP, SIGUSR1, SIGTSTP, SIGQUIT}) {
    dispositions.emplace_back(signal, std::signal(signal, SIG_IGN));
  }
  EXPECT_EQ(outputOf(testChild({"signals"})), "end\n");
  for (const auto& [signal, disposition] : dispositions) {
    std::signal(signal, disposition);
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
}

TEST(ChildProcessEnvironment, IsExactlyTheOneGiven) {
  ChildProcess::Request request = testChild({"environment"});
  request.environment = {{"A", "1"}, {"EMPTY", ""}, {"EQUALS", "x=y"}, {"SPACE", "two words"}};
  EXPECT_EQ(outputOf(std::move(request)), "A=1\0EMPTY=\0EQUALS=x=y\0SPACE=two words\0"s);
}

TEST(ChildProcessEnvironment, MayBeEmpty) {
  ChildProcess::Request request = testChild({"environment"});
  request.environment = {};
  EXPECT_EQ(outputOf(std::move(request)), "");
}

TEST(ChildProcessTerminal, MakesTheChildTheLeaderOfASessionOnIt) {
  EXPECT_EQ(outputOnTerminal("terminal"), "session\nterminal\n");
}

TEST(ChildProcessTerminal, IsNotAcquiredUnlessRequested) {
  EXPECT_EQ(outputOf(testChild({"terminal"})).find("session"), std::string::npos);
}

TEST(ChildProcessTerminal, MustBeATerminal) {
  Pipe pipe = test::openPipe();
  ChildProcess::Request request = testChild({"terminal"});
  request.standardInput = pipe.reader.get();
  request.terminal = ChildProcess::Terminal::Controlling;
  ChildProcess child(std::move(request));
  const auto launched = child.launch();
  ASSERT_FALSE(launched);
  EXPECT_EQ(launched.reason(), "Inappropriate ioctl for device");
  EXPECT_EQ(child.pid(), 0);
}

}  // namespace
}  // namespace zolt
