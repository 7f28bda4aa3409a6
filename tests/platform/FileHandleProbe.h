#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <thread>
#include <utility>
#include <vector>

#include "platform/FileHandle.h"
#include "platform/Pipe.h"
#include "support/ProcessFacts.h"
#include "support/WaitFor.h"

namespace zolt::test {

inline Pipe openPipe() {
  auto pipe = makePipe();
  EXPECT_TRUE(pipe) << pipe.reason();
  return std::move(pipe.value());
}

/// Bytes that depend on their position in the stream, so that a missing, repeated or misplaced piece is noticed.
inline std::string pattern(std::size_t size) {
  std::string bytes(size, '\0');
  std::uint32_t state = 1;
  for (char& byte : bytes) {
    state = state * 1664525 + 1013904223;
    byte = static_cast<char>(state >> 24);
  }
  return bytes;
}

/// Writes all of `data`, blocking.
inline void writeAll(int descriptor, std::string_view data) {
  while (!data.empty()) {
    const ssize_t written = write(descriptor, data.data(), data.size());
    ASSERT_GT(written, 0);
    data.remove_prefix(static_cast<std::size_t>(written));
  }
}

/// Reads, blocking, up to `size` bytes or end of file.
inline std::string readAll(int descriptor, std::size_t size = std::string::npos) {
  std::string content;
  std::string buffer(64 * 1024, '\0');
  while (content.size() < size) {
    const ssize_t got = read(descriptor, buffer.data(), std::min(buffer.size(), size - content.size()));
    if (got <= 0) break;
    content.append(buffer, 0, static_cast<std::size_t>(got));
  }
  return content;
}

/// Collects everything from a handle in its readability handler, and keeps the buffers for as long as it is told to.
/// Handle and collector may be destroyed in any order.
class Collector {
 public:
  explicit Collector(FileHandle& handle) {
    handle.setReadabilityHandler([state = m_state](FileHandle& readable) { state->take(readable.availableData()); });
  }

  void keepBuffers() {
    const std::lock_guard lock(m_state->mutex);
    m_state->keep = true;
  }
  void releaseBuffers() {
    std::vector<Bytes> released;
    const std::lock_guard lock(m_state->mutex);
    m_state->keep = false;
    released.swap(m_state->kept);
  }

  std::string content() const { return read(&State::content); }
  std::size_t size() const {
    const std::lock_guard lock(m_state->mutex);
    return m_state->content.size();
  }
  int calls() const { return read(&State::calls); }
  int emptyCalls() const { return read(&State::emptyCalls); }
  std::thread::id thread() const { return read(&State::thread); }

  bool receives(std::string_view expected) const {
    return waitFor([&] { return size() >= expected.size(); }) && content() == expected;
  }

 private:
  struct State {
    std::mutex mutex;
    std::string content;
    std::vector<Bytes> kept;
    int calls = 0;
    int emptyCalls = 0;
    bool keep = false;
    std::thread::id thread;

    void take(Bytes bytes) {
      const std::lock_guard lock(mutex);
      ++calls;
      if (bytes.empty()) ++emptyCalls;
      content += bytes.view();
      thread = std::this_thread::get_id();
      if (keep) kept.push_back(std::move(bytes));
    }
  };

  template <class Field>
  Field read(Field State::*field) const {
    const std::lock_guard lock(m_state->mutex);
    return (*m_state).*field;
  }

  std::shared_ptr<State> m_state = std::make_shared<State>();
};

/// Makes the background reader go round its loop `turns` times, so that pending work has been done, and anything that
/// it repeats has been repeated often.
inline void turnTheReader(int turns = 20) {
  Pipe pipe = openPipe();
  FileHandle reader(std::move(pipe.reader));
  std::atomic<int> seen = 0;
  reader.setReadabilityHandler([&](FileHandle& handle) { seen += static_cast<int>(handle.availableData().size()); });
  for (int turn = 1; turn <= turns; ++turn) {
    writeAll(pipe.writer.get(), ".");
    while (seen < turn) {
      std::this_thread::yield();
    }
  }
}

/// The number of open descriptors, once the reader has closed those of handles that were released.
inline std::size_t descriptorsAtRest() {
  Pipe pipe = openPipe();
  FileHandle reader(std::move(pipe.reader));
  std::atomic<bool> called = false;
  reader.setReadabilityHandler([&](FileHandle& handle) { called = !handle.availableData().empty(); });
  writeAll(pipe.writer.get(), ".");
  while (!called) {
    std::this_thread::yield();
  }
  constexpr std::size_t kOwn = 2;
  return openDescriptors() - kOwn;
}

}  // namespace zolt::test
