#include "base/Diagnostics.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <csignal>
#include <future>
#include <string>

namespace zolt {
namespace {

// Long enough for the slowest machine; only a call that blocks takes as long.
constexpr std::chrono::seconds kLimit{20};

// A pipe in the place of one of this process's standard streams, as another process would have handed it over.
class PipeAsStream {
 public:
  explicit PipeAsStream(int stream) : m_stream(stream), m_before(dup(stream)) {
    static_cast<void>(pipe(m_ends.data()));
    dup2(m_ends[1], m_stream);
  }
  ~PipeAsStream() {
    dup2(m_before, m_stream);
    close(m_before);
    close(m_ends[1]);
    closeReader();
  }
  PipeAsStream(const PipeAsStream&) = delete;
  PipeAsStream& operator=(const PipeAsStream&) = delete;

  // Leaves no room for a single byte.
  void fill() {
    fcntl(m_stream, F_SETFL, O_WRONLY | O_NONBLOCK);
    for (const std::size_t size : {std::size_t{4096}, std::size_t{1}}) {
      while (write(m_stream, std::string(size, 'x').data(), size) > 0) {
      }
    }
    fcntl(m_stream, F_SETFL, O_WRONLY);
  }
  // Everything that is in the pipe.
  std::string taken() {
    fcntl(m_ends[0], F_SETFL, O_RDONLY | O_NONBLOCK);
    std::string text;
    std::array<char, 4096> buffer{};
    for (ssize_t got = 0; (got = read(m_ends[0], buffer.data(), buffer.size())) > 0;) {
      text.append(buffer.data(), static_cast<std::size_t>(got));
    }
    return text;
  }
  void closeReader() {
    if (m_ends[0] >= 0) close(m_ends[0]);
    m_ends[0] = -1;
  }

 private:
  int m_stream;
  int m_before;
  std::array<int, 2> m_ends{-1, -1};
};

// Whether `action` returns by itself; one that does not is let go by emptying the pipe.
template <class Action>
bool returns(PipeAsStream& stream, Action action) {
  auto done = std::async(std::launch::async, action);
  const bool returned = done.wait_for(kLimit) == std::future_status::ready;
  while (done.wait_for(std::chrono::milliseconds(1)) != std::future_status::ready) {
    static_cast<void>(stream.taken());
  }
  return returned;
}

TEST(Diagnostics, AreLinesOnTheStreamTheyAreMeantFor) {
  PipeAsStream output(STDOUT_FILENO);
  PipeAsStream error(STDERR_FILENO);
  printLine("to the output");
  printErrorLine("to the error");
  EXPECT_EQ(output.taken(), "to the output\n");
  EXPECT_EQ(error.taken(), "to the error\n");
}

TEST(Diagnostics, AreDroppedRatherThanWaitForAReader) {
  for (const auto& [stream, print] :
       {std::pair{STDOUT_FILENO, &printLine}, std::pair{STDERR_FILENO, &printErrorLine}}) {
    PipeAsStream full(stream);
    full.fill();
    EXPECT_TRUE(returns(full, [print = print] { print("no room"); }));
    EXPECT_EQ(full.taken().find("no room"), std::string::npos);
    print("room again");
    EXPECT_EQ(full.taken(), "room again\n");
  }
}

TEST(Diagnostics, MayBeLongerThanThePipe) {
  PipeAsStream output(STDOUT_FILENO);
  EXPECT_TRUE(returns(output, [] { printLine(std::string(10 << 20, 'l')); }));
  EXPECT_GE(output.taken().size(), 4096U);
}

TEST(Diagnostics, ArriveWholeWhereThereIsRoom) {
  PipeAsStream output(STDOUT_FILENO);
  const std::string line(20'000, 'l');
  printLine(line);
  EXPECT_EQ(output.taken(), line + "\n");
}

TEST(Diagnostics, AreDroppedWhereTheReaderHasGone) {
  std::signal(SIGPIPE, SIG_IGN);
  PipeAsStream output(STDOUT_FILENO);
  output.closeReader();
  EXPECT_TRUE(returns(output, [] { printLine("nobody reads"); }));
}

TEST(Diagnostics, LeaveTheStreamBlockingForThoseWhoShareIt) {
  PipeAsStream output(STDOUT_FILENO);
  printLine("line");
  EXPECT_EQ(fcntl(STDOUT_FILENO, F_GETFL) & O_NONBLOCK, 0);
}

}  // namespace
}  // namespace zolt
