#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QThread>
#include <atomic>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/FileHandleProbe.h"
#include "platform/Pipe.h"
#include "session/PTYSession.h"
#include "session/SessionProbe.h"

namespace zolt {
namespace {

using test::capturedOutput;
using test::program;
using test::runLoopFor;
using test::SessionProbe;
using test::waitFor;

constexpr std::size_t kMiB = 1024 * 1024;

// What the helper program writes as a flood of `bytes`.
std::string flood(std::size_t bytes) {
  std::string block;
  while (block.size() < 64 * 1024) {
    block += std::string(79, static_cast<char>('a' + block.size() / 80 % 26)) + "\n";
  }
  std::string text;
  while (text.size() < bytes) {
    text += block.substr(0, bytes - text.size());
  }
  return text;
}

TEST(PTYSessionOutput, ArrivesUnchangedWithoutAnyDecoding) {
  EXPECT_EQ(SessionProbe().outputOf(program({"raw", R"(\x00\xFF\xC3\x28\x1b[31m\xE2\x82)"})),
            std::string("\x00\xFF\xC3\x28\x1B[31m\xE2\x82", 11));
}

TEST(PTYSessionOutput, IsDeliveredOnTheMainThreadAndNeverEmpty) {
  PTYSession session;
  bool elsewhere = false;
  bool empty = false;
  std::size_t size = 0;
  bool ended = false;
  session.onOutput = [&](const Bytes& chunk) {
    elsewhere = elsewhere || QThread::currentThread() != QCoreApplication::instance()->thread();
    empty = empty || chunk.empty();
    size += chunk.size();
  };
  session.onExit = [&](std::int32_t) { ended = true; };
  ASSERT_TRUE(session.start(program({"flood", "800000"})));
  EXPECT_TRUE(waitFor([&] { return ended && session.isDrained() && size >= 810000; }));
  EXPECT_FALSE(elsewhere);
  EXPECT_FALSE(empty);
}

TEST(PTYSessionOutput, GoesToATapWithoutLossFromWhereverItIsSet) {
  for (const std::size_t setAfter : {std::size_t{0}, std::size_t{1}, std::size_t{50'000}}) {
    PTYSession session;
    std::mutex mutex;
    std::string output;
    std::atomic<std::size_t> late = 0;
    bool isTapped = false;
    const auto append = [&](const Bytes& chunk) {
      const std::lock_guard lock(mutex);
      std::ranges::copy_if(chunk.view(), std::back_inserter(output), [](char each) { return each != '\r'; });
      return output.size();
    };
    const auto tap = [&] {
      session.setOutputTap([&](const Bytes& chunk) { append(chunk); });
      isTapped = true;
    };
    if (setAfter == 0) tap();
    session.onOutput = [&](const Bytes& chunk) {
      if (isTapped) ++late;
      if (append(chunk) >= setAfter && !isTapped) tap();
    };
    ASSERT_TRUE(session.start(program({"flood", "800000"})));
    EXPECT_TRUE(waitFor([&] {
      const std::lock_guard lock(mutex);
      return output.size() >= 800000;
    }));
    EXPECT_TRUE(isTapped);
    EXPECT_EQ(late, 0U) << "chunks that went to the handler after the tap was set";
    EXPECT_TRUE(output == flood(800000)) << setAfter;
    session.setOutputTap(nullptr);
  }
}

// The descriptor of the one pseudo-terminal that this process is the master of; -1 when there is none.
int masterDescriptor() {
  for (const auto& entry : std::filesystem::directory_iterator("/proc/self/fd")) {
    std::error_code ignored;
    const std::string target = std::filesystem::read_symlink(entry.path(), ignored).string();
    if (target.ends_with("/ptmx")) return std::stoi(entry.path().filename().string());
  }
  return -1;
}

// The test itself reads what the session's reader was woken for, so that the reader finds nothing.
TEST(PTYSessionOutput, IsNeverEmptyThoughAReadFindsNothing) {
  static_cast<void>(test::descriptorsAtRest());  // no earlier master is left
  PTYSession session;
  int empty = 0;
  int chunks = 0;
  session.onOutput = [&](const Bytes& chunk) { ++(chunk.empty() ? empty : chunks); };
  ASSERT_TRUE(session.start(program({"flood", "0"})));
  const int master = masterDescriptor();
  ASSERT_GE(master, 0);
  std::atomic<std::size_t> taken = 0;
  std::jthread thief([&](const std::stop_token& stop) {
    std::string buffer(4096, '\0');
    while (!stop.stop_requested()) {
      const ssize_t got = read(master, buffer.data(), buffer.size());
      if (got > 0) taken += static_cast<std::size_t>(got);
    }
  });
  EXPECT_TRUE(waitFor([&] { return taken > 4 * kMiB && chunks > 0; }));
  thief.request_stop();
  thief.join();
  EXPECT_EQ(empty, 0);
}

TEST(PTYSessionOutput, IsDroppedWhereNobodyTakesIt) {
  PTYSession session;
  bool ended = false;
  session.onExit = [&](std::int32_t) { ended = true; };
  ASSERT_TRUE(session.start(program({"flood", "8000000"})));
  EXPECT_TRUE(waitFor([&] { return ended; }));
}

TEST(PTYSessionOutput, GoesToTheHandlerThatWasAssignedLast) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"cat"})));
  ASSERT_TRUE(probe.shows("ready"));
  std::string taken;
  probe.session.onOutput = [&](const Bytes& chunk) { taken += chunk.view(); };
  probe.session.write("over to you");
  EXPECT_TRUE(waitFor([&] { return taken == "over to you"; }));
  EXPECT_EQ(probe.output.find("over"), std::string::npos);
}

TEST(PTYSessionOutput, LetsAHandlerReplaceItself) {
  SessionProbe probe;
  std::string first;
  std::string second;
  probe.session.onOutput = [&](const Bytes& chunk) {
    probe.session.onOutput = [&](const Bytes& next) { second += next.view(); };
    first += chunk.view();
  };
  ASSERT_TRUE(probe.session.start(program({"cat"})));
  ASSERT_TRUE(waitFor([&] { return !first.empty(); }));
  probe.session.write("more");
  EXPECT_TRUE(waitFor([&] { return second.ends_with("more"); }));
}

TEST(PTYSessionOutput, ArrivesWholeAndInOrderFromAFlood) {
  const std::size_t size = 24 * kMiB;
  const std::string output = SessionProbe().outputOf(program({"flood", std::to_string(size)}));
  EXPECT_EQ(output.size(), size);
  EXPECT_TRUE(output == flood(size));
}

TEST(PTYSessionOutput, IsBoundedOnItsWayAndGoesOnWhenItIsTaken) {
  constexpr std::size_t kSize = 12 * kMiB;
  SessionProbe probe;
  std::vector<Bytes> held;
  std::size_t heldBytes = 0;
  const PTYSession::OutputHandler collect = probe.session.onOutput;
  probe.session.onOutput = [&](const Bytes& chunk) {
    collect(chunk);
    held.push_back(chunk);
    heldBytes += chunk.size();
  };
  ASSERT_TRUE(probe.session.start(program({"flood", std::to_string(kSize)})));
  EXPECT_TRUE(waitFor([&] { return heldBytes >= FileHandle::inFlightLimitBytes; }));
  runLoopFor(std::chrono::milliseconds(100));
  EXPECT_LT(heldBytes, FileHandle::inFlightLimitBytes + FileHandle::readLimitBytes);
  EXPECT_TRUE(probe.exits.empty()) << "the program waits for the terminal";

  probe.session.onOutput = collect;
  held.clear();
  EXPECT_TRUE(waitFor([&] { return probe.output.size() >= kSize; }));
  EXPECT_TRUE(probe.output == flood(kSize));
  EXPECT_TRUE(probe.ends());
}

TEST(PTYSessionWrite, SendsBytesAndTextToTheShell) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"hex"})));
  ASSERT_TRUE(probe.shows("ready\n"));
  probe.session.write(Bytes(std::string("\x00\xFF\n", 3)));
  probe.session.write("\xE2\x82\xAC");
  EXPECT_TRUE(probe.shows(" 00 FF 0A E2 82 AC"));
}

TEST(PTYSessionWrite, ReturnsAtOnceThoughTheProgramReadsNothing) {
  static_cast<void>(test::descriptorsAtRest());  // no earlier master is left
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"sleeper"})));
  ASSERT_TRUE(probe.shows("sleeping"));
  // It would never return if it waited for the program.
  EXPECT_EQ(capturedOutput([&] { probe.session.write(std::string(8 * kMiB, 'x')); }), "");
  EXPECT_TRUE(probe.session.isRunning());
}

TEST(PTYSessionWrite, DeliversALargePasteInOrder) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"cat"})));
  ASSERT_TRUE(probe.shows("ready\n"));
  probe.output.clear();
  const std::string paste = flood(3 * kMiB);
  probe.session.write(paste);
  EXPECT_TRUE(waitFor([&] { return probe.output.size() >= paste.size(); }));
  EXPECT_TRUE(probe.output == paste);
}

TEST(PTYSessionWrite, PrintsAnErrorWhenTooMuchIsPendingAndCarriesOn) {
  static_cast<void>(test::descriptorsAtRest());  // no earlier master is left
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"sleeper"})));
  ASSERT_TRUE(probe.shows("sleeping"));
  const std::string tooMuch(FileHandle::writeLimitBytes + 1, 'x');
  EXPECT_EQ(capturedOutput([&] { probe.session.write(tooMuch); }),
            "Write error: too much is waiting to be written already\n");
  EXPECT_TRUE(probe.session.isRunning());
}

TEST(PTYSessionResize, IsSeenByTheShell) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"size"})));
  EXPECT_TRUE(probe.shows("0x0\n")) << "a new terminal has no size";
  probe.session.resize(30, 100);
  EXPECT_TRUE(probe.shows("30x100\n"));
  probe.session.resize({.rows = 24, .columns = 80, .pixelWidth = 640, .pixelHeight = 384});
  EXPECT_TRUE(probe.shows("24x80\n"));
}

TEST(PTYSessionResize, HoldsForEachLaterStart) {
  SessionProbe probe;
  probe.session.resize(50, 132);
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(probe.outputOf(test::script("stty size")), "50 132\n");
  }
}

TEST(PTYSessionSignal, GoesToTheForegroundProcessGroup) {
  SessionProbe probe;
  const std::string wait = std::string(ZOLT_TEST_CHILD) + " wait";
  ASSERT_TRUE(probe.session.start(test::script("set -m; " + wait + "; echo after $?; " + wait)));
  ASSERT_TRUE(probe.shows("waiting\n"));
  probe.session.sendSignal(SIGTERM);
  EXPECT_TRUE(probe.shows("after 143\nwaiting\n"));
  EXPECT_TRUE(probe.session.isRunning());
}

TEST(PTYSessionSignal, ReachesAShellThatIsInTheForegroundItself) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"wait"})));
  ASSERT_TRUE(probe.shows("waiting"));
  probe.session.sendSignal(SIGUSR2);
  EXPECT_TRUE(probe.ends());
  EXPECT_EQ(probe.exits, std::vector<std::int32_t>{SIGUSR2});
}

// The terminal is full, so the bytes wait; then a pipe without a reader stands in its place.
TEST(PTYSessionWrite, PrintsAnErrorForWhatCouldNotBeWrittenLater) {
  static_cast<void>(test::descriptorsAtRest());  // no earlier master is left
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(program({"sleeper"})));
  ASSERT_TRUE(probe.shows("sleeping"));
  probe.session.write(std::string(kMiB, 'x'));
  const int master = masterDescriptor();
  ASSERT_GE(master, 0);
  auto broken = makePipe();
  auto printed = makePipe();
  ASSERT_TRUE(broken && printed);
  broken.value().reader.reset();
  std::fflush(stdout);
  const Descriptor before(dup(STDOUT_FILENO));
  dup2(printed.value().writer.get(), STDOUT_FILENO);
  dup2(broken.value().writer.get(), master);
  // The monitor looks at its descriptors again when one is added.
  const FileHandle wake(std::move(broken.value().writer));
  const std::string expected = "Write error: Broken pipe\n";
  pollfd waited{.fd = printed.value().reader.get(), .events = POLLIN, .revents = 0};
  std::string line(expected.size(), '\0');
  const bool isPrinted = waitFor([&] { return poll(&waited, 1, 0) == 1; });
  if (isPrinted) line.resize(static_cast<std::size_t>(read(waited.fd, line.data(), line.size())));
  dup2(before.get(), STDOUT_FILENO);
  EXPECT_EQ(line, expected);
}

}  // namespace
}  // namespace zolt
