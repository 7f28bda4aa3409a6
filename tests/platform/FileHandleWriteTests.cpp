#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include "platform/FileHandle.h"
#include "platform/FileHandleProbe.h"

namespace zolt {
namespace {

using test::openPipe;
using test::pattern;
using test::readAll;
using test::waitFor;

constexpr std::size_t kMiB = 1024 * 1024;

// A pipe with a handle on its write end.
class FileHandleWriting : public testing::Test {
 protected:
  Pipe pipe = openPipe();
  std::unique_ptr<FileHandle> writer = std::make_unique<FileHandle>(std::move(pipe.writer));
};

TEST_F(FileHandleWriting, WritesWhatTheSystemAcceptsAtOnce) {
  EXPECT_TRUE(writer->write("hello"));
  EXPECT_EQ(readAll(pipe.reader.get(), 5), "hello");
}

TEST_F(FileHandleWriting, WritesNothingForEmptyData) {
  EXPECT_TRUE(writer->write(""));
  writer.reset();
  EXPECT_EQ(readAll(pipe.reader.get()), "");
}

TEST_F(FileHandleWriting, ReturnsWithoutAReaderAndDeliversEverythingInOrderLater) {
  const std::string sent = pattern(8 * kMiB);
  // Nobody reads yet: a write that waited for a reader would never return.
  EXPECT_TRUE(writer->write(sent));
  EXPECT_EQ(readAll(pipe.reader.get(), sent.size()), sent);
}

TEST_F(FileHandleWriting, KeepsTheOrderOfManyWrites) {
  const std::string sent = pattern(3 * kMiB);
  for (std::size_t from = 0, size = 1; from < sent.size(); from += size, size = size * 3 % 7919 + 1) {
    size = std::min(size, sent.size() - from);
    EXPECT_TRUE(writer->write(std::string_view(sent).substr(from, size)));
  }
  EXPECT_EQ(readAll(pipe.reader.get(), sent.size()), sent);
}

TEST_F(FileHandleWriting, KeepsTheOrderWhileTheReaderReads) {
  const std::string sent = pattern(8 * kMiB);
  std::string received;
  std::thread program([&] { received = readAll(pipe.reader.get(), sent.size()); });
  for (std::size_t from = 0; from < sent.size(); from += 10000) {
    EXPECT_TRUE(writer->write(std::string_view(sent).substr(from, 10000)));
  }
  program.join();
  EXPECT_EQ(received, sent);
}

TEST_F(FileHandleWriting, RefusesBytesBeyondTheLimitAndDeliversTheRest) {
  const std::string sent = pattern(FileHandle::writeLimitBytes + 1000);
  const auto written = writer->write(sent);
  ASSERT_FALSE(written);
  EXPECT_EQ(written.reason(), "too much is waiting to be written already");
  const std::string received = readAll(pipe.reader.get(), FileHandle::writeLimitBytes);
  EXPECT_EQ(received, sent.substr(0, FileHandle::writeLimitBytes));
}

TEST_F(FileHandleWriting, AcceptsMoreOnceTheReaderHasReadSome) {
  EXPECT_FALSE(writer->write(std::string(FileHandle::writeLimitBytes + 1, 'a')));
  // The pipe itself has accepted some, so less than the limit is waiting now.
  EXPECT_FALSE(writer->write(std::string(kMiB, 'b')));
  EXPECT_EQ(readAll(pipe.reader.get(), 4 * kMiB), std::string(4 * kMiB, 'a'));
  EXPECT_TRUE(waitFor([&] { return static_cast<bool>(writer->write("c")); }));
}

TEST_F(FileHandleWriting, FailsWithAReasonIfTheReaderIsGone) {
  pipe.reader.reset();
  const auto written = writer->write("lost");
  ASSERT_FALSE(written);
  EXPECT_EQ(written.reason(), "Broken pipe");
  EXPECT_FALSE(writer->write("lost as well"));
}

TEST_F(FileHandleWriting, ReportsALaterFailureOnABackgroundThread) {
  std::mutex mutex;
  std::string reason;
  std::thread::id thread;
  std::atomic<int> reports = 0;
  writer->setWriteFailureHandler([&](const std::string& why) {
    const std::lock_guard lock(mutex);
    reason = why;
    thread = std::this_thread::get_id();
    ++reports;
  });
  EXPECT_TRUE(writer->write(pattern(kMiB)));
  pipe.reader.reset();
  EXPECT_TRUE(waitFor([&] { return reports == 1; }));
  test::turnTheReader();
  EXPECT_EQ(reports, 1);
  const std::lock_guard lock(mutex);
  EXPECT_EQ(reason, "Broken pipe");
  EXPECT_NE(thread, std::this_thread::get_id());
}

TEST_F(FileHandleWriting, DropsPendingBytesWhenReleased) {
  EXPECT_TRUE(writer->write(pattern(kMiB)));
  writer.reset();
  const std::string received = readAll(pipe.reader.get());
  EXPECT_LT(received.size(), kMiB);
  EXPECT_EQ(received, pattern(kMiB).substr(0, received.size()));
}

TEST_F(FileHandleWriting, ReturnsItsDescriptor) {
  EXPECT_GE(writer->descriptor(), 0);
  EXPECT_EQ(write(writer->descriptor(), "direct", 6), 6);
  EXPECT_EQ(readAll(pipe.reader.get(), 6), "direct");
}

}  // namespace
}  // namespace zolt
