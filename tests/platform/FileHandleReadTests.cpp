#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <termios.h>

#include <memory>
#include <string>
#include <thread>

#include "platform/FileHandle.h"
#include "platform/FileHandleProbe.h"
#include "platform/PseudoTerminal.h"

namespace zolt {
namespace {

using test::Collector;
using test::openPipe;
using test::turnTheReader;
using test::waitFor;
using test::writeAll;

// A pipe with a handle on its read end.
class FileHandleReading : public testing::Test {
 protected:
  void say(std::string_view data) { writeAll(pipe.writer.get(), data); }

  Pipe pipe = openPipe();
  std::unique_ptr<FileHandle> reader = std::make_unique<FileHandle>(std::move(pipe.reader));
};

TEST_F(FileHandleReading, CallsTheReadabilityHandlerOnABackgroundThread) {
  const Collector collector(*reader);
  say("hello");
  EXPECT_TRUE(collector.receives("hello"));
  EXPECT_NE(collector.thread(), std::this_thread::get_id());
}

TEST_F(FileHandleReading, CallsTheHandlerForBytesThatArrivedBeforeIt) {
  say("early");
  const Collector collector(*reader);
  EXPECT_TRUE(collector.receives("early"));
}

TEST_F(FileHandleReading, ReturnsEverythingThatIsAvailable) {
  say("one ");
  say("two ");
  say("three");
  EXPECT_EQ(reader->availableData().view(), "one two three");
}

TEST_F(FileHandleReading, ReturnsNothingIfNothingIsAvailable) {
  EXPECT_TRUE(reader->availableData().empty());
  say("x");
  EXPECT_EQ(reader->availableData().view(), "x");
  EXPECT_TRUE(reader->availableData().empty());
}

TEST_F(FileHandleReading, ReturnsNoMoreThanTheReadLimitAtOnce) {
  const std::string sent = test::pattern(600 * 1024);
  if (fcntl(pipe.writer.get(), F_SETPIPE_SZ, 1024 * 1024) < 0) GTEST_SKIP() << "the pipe cannot be made large enough";
  say(sent);
  const Bytes first = reader->availableData();
  const Bytes second = reader->availableData();
  const Bytes third = reader->availableData();
  EXPECT_EQ(first.size(), FileHandle::readLimitBytes);
  EXPECT_EQ(second.size(), FileHandle::readLimitBytes);
  EXPECT_EQ(std::string(first.view()) + std::string(second.view()) + std::string(third.view()), sent);
}

TEST_F(FileHandleReading, DeliversTheLastBytesBeforeTheEndOfFile) {
  const Collector collector(*reader);
  say("last words");
  pipe.writer.reset();
  EXPECT_TRUE(waitFor([&] { return collector.emptyCalls() == 1; }));
  EXPECT_EQ(collector.content(), "last words");
}

TEST_F(FileHandleReading, CallsTheHandlerOnceAtEndOfFileAndThenNoMore) {
  const Collector collector(*reader);
  pipe.writer.reset();
  EXPECT_TRUE(waitFor([&] { return collector.calls() == 1; }));
  turnTheReader();
  EXPECT_EQ(collector.calls(), 1);
  EXPECT_EQ(collector.emptyCalls(), 1);
}

TEST_F(FileHandleReading, TreatsATerminalsHangUpAsEndOfFile) {
  auto terminal = openPseudoTerminal();
  ASSERT_TRUE(terminal);
  FileHandle master(std::move(terminal.value().master));
  const Collector collector(master);
  writeAll(terminal.value().slave.get(), "bye");
  EXPECT_TRUE(collector.receives("bye"));
  terminal.value().slave.reset();
  EXPECT_TRUE(waitFor([&] { return collector.emptyCalls() == 1; }));
  const int calls = collector.calls();
  turnTheReader();
  EXPECT_EQ(collector.calls(), calls);
}

TEST_F(FileHandleReading, DoesNotCallTheHandlerAfterEndOfFileWhileBytesWaitToBeWritten) {
  int ends[2];
  ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
  const Descriptor peer(ends[1]);
  FileHandle handle{Descriptor(ends[0])};
  EXPECT_TRUE(handle.write(test::pattern(4 * 1024 * 1024)));
  const Collector collector(handle);
  ASSERT_EQ(shutdown(peer.get(), SHUT_WR), 0);
  EXPECT_TRUE(waitFor([&] { return collector.emptyCalls() == 1; }));
  turnTheReader();
  EXPECT_EQ(collector.calls(), 1);
}

TEST_F(FileHandleReading, NoLongerCallsARemovedHandler) {
  const Collector collector(*reader);
  say("seen");
  EXPECT_TRUE(collector.receives("seen"));
  reader->setReadabilityHandler(nullptr);
  const int calls = collector.calls();
  say("unseen");
  turnTheReader();
  EXPECT_EQ(collector.calls(), calls);
  EXPECT_EQ(collector.content(), "seen");
}

TEST_F(FileHandleReading, GivesANewHandlerWhatTheOldOneDidNotRead) {
  { const Collector unused(*reader); }
  reader->setReadabilityHandler(nullptr);
  say("kept");
  const Collector collector(*reader);
  EXPECT_TRUE(collector.receives("kept"));
}

TEST_F(FileHandleReading, NeverRunsAHandlerOnceItsRemovalHasReturned) {
  for (int round = 0; round < 300; ++round) {
    auto alive = std::make_unique<std::atomic<int>>(0);
    reader->setReadabilityHandler(
        [calls = alive.get()](FileHandle& handle) { *calls += static_cast<int>(handle.availableData().size()); });
    say("x");
    reader->setReadabilityHandler(nullptr);
    const int calls = *alive;
    alive.reset();  // a handler that was still running would touch freed memory
    EXPECT_LE(calls, 300);
  }
}

TEST_F(FileHandleReading, ClosesTheDescriptorWhenItIsReleased) {
  const Collector collector(*reader);
  const auto pipeHasNoReader = [&] {
    pollfd writer{.fd = pipe.writer.get(), .events = POLLOUT, .revents = 0};
    return poll(&writer, 1, 0) == 1 && (writer.revents & POLLERR) != 0;
  };
  EXPECT_FALSE(pipeHasNoReader());
  reader.reset();
  EXPECT_TRUE(waitFor(pipeHasNoReader));
}

TEST_F(FileHandleReading, CanBeReleasedWhileBytesArrive) {
  for (int round = 0; round < 100; ++round) {
    Pipe other = openPipe();
    auto handle = std::make_unique<FileHandle>(std::move(other.reader));
    const Collector collector(*handle);
    writeAll(other.writer.get(), "arriving");
    handle.reset();
    EXPECT_LE(collector.calls(), 1);
  }
}

TEST_F(FileHandleReading, LeavesBuffersReadableAfterItsRelease) {
  say("outlives");
  const Bytes bytes = reader->availableData();
  reader.reset();
  EXPECT_EQ(bytes.view(), "outlives");
}

TEST_F(FileHandleReading, IsDrainedWhenNothingWaitsToBeRead) {
  EXPECT_TRUE(reader->isDrained());
  say("x");
  EXPECT_FALSE(reader->isDrained());
  static_cast<void>(reader->availableData());
  EXPECT_TRUE(reader->isDrained());
}

TEST_F(FileHandleReading, PausesWhileTooMuchIsInFlightAndResumesOnceItIsReleased) {
  const std::string sent = test::pattern(12 * 1024 * 1024);
  Collector collector(*reader);
  collector.keepBuffers();
  std::thread program([&] { say(sent); });

  EXPECT_TRUE(waitFor([&] { return collector.size() >= FileHandle::inFlightLimitBytes; }));
  turnTheReader();
  const std::size_t held = collector.size();
  EXPECT_LT(held, FileHandle::inFlightLimitBytes + FileHandle::readLimitBytes);
  turnTheReader();
  EXPECT_EQ(collector.size(), held);
  EXPECT_FALSE(reader->isDrained());

  collector.releaseBuffers();
  EXPECT_TRUE(collector.receives(sent));
  program.join();
}

TEST(FileHandleLimit, HoldsEvenIfTheOtherEndHangsUp) {
  auto terminal = openPseudoTerminal();
  ASSERT_TRUE(terminal);
  termios raw{};
  cfmakeraw(&raw);
  const int slave = terminal.value().slave.get();
  tcsetattr(slave, TCSANOW, &raw);
  fcntl(slave, F_SETFL, O_NONBLOCK);
  FileHandle master(std::move(terminal.value().master));
  std::atomic<bool> lost = false;
  master.setWriteFailureHandler([&](const std::string&) { lost = true; });
  EXPECT_TRUE(master.write(test::pattern(1024 * 1024))) << "some of it is pending: nobody reads";
  Collector collector(master);
  collector.keepBuffers();
  const std::string block(4096, 'x');
  const auto fill = [&] {
    while (write(slave, block.data(), block.size()) > 0) {
    }
    return collector.size() >= FileHandle::inFlightLimitBytes;
  };
  ASSERT_TRUE(waitFor(fill));
  turnTheReader();
  fill();
  const int calls = collector.calls();
  terminal.value().slave.reset();
  EXPECT_TRUE(waitFor([&] { return lost.load(); }));
  turnTheReader();
  EXPECT_EQ(collector.calls(), calls);
}

TEST(Bytes, ShareTheirContentBetweenCopies) {
  const Bytes original(std::string("content"));
  const Bytes copy = original;  // NOLINT(performance-unnecessary-copy-initialization)
  EXPECT_EQ(copy.view().data(), original.view().data());
  EXPECT_EQ(copy.size(), 7U);
  EXPECT_TRUE(Bytes().empty());
  EXPECT_EQ(Bytes().size(), 0U);
}

}  // namespace
}  // namespace zolt
