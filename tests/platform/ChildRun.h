#pragma once

#include <fcntl.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/ChildProcess.h"
#include "platform/FileHandleProbe.h"
#include "support/WaitFor.h"

namespace zolt::test {

/// The helper program in one of its modes.
inline ChildProcess::Request testChild(std::vector<std::string> arguments) {
  return {.executable = ZOLT_TEST_CHILD, .arguments = std::move(arguments), .environment = processEnvironment()};
}

inline ChildProcess::Request shellScript(const std::string& text) {
  return {.executable = "/bin/sh", .arguments = {"-c", text}, .environment = processEnvironment()};
}

/// A child that reads nothing and whose output comes through a pipe.
class ChildRun {
 public:
  explicit ChildRun(ChildProcess::Request request) : m_child(withStreams(std::move(request))) {
    launched = m_child.launch();
    m_pipe.writer.reset();
    m_nothing.reset();
  }

  Result<void> launched;

  ChildProcess& child() { return m_child; }
  /// The next `size` bytes of the child's output, or all of it until the child ends.
  std::string output(std::size_t size = std::string::npos) { return readAll(m_pipe.reader.get(), size); }
  /// Whether the child's next output is `text`.
  bool says(const std::string& text) { return output(text.size()) == text; }
  bool ends() {
    return waitFor([this] { return !m_child.isRunning(); });
  }

 private:
  ChildProcess::Request withStreams(ChildProcess::Request request) {
    request.standardInput = m_nothing.get();
    request.standardOutput = m_pipe.writer.get();
    return request;
  }

  Pipe m_pipe = openPipe();
  Descriptor m_nothing{open("/dev/null", O_RDONLY | O_CLOEXEC)};
  ChildProcess m_child;
};

/// The complete output of a child that exits on its own.
inline std::string outputOf(ChildProcess::Request request) {
  ChildRun run(std::move(request));
  EXPECT_TRUE(run.launched) << run.launched.reason();
  return run.output();
}

}  // namespace zolt::test
