#include "platform/PseudoTerminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <array>

#include "platform/Pipe.h"

namespace zolt {
namespace {

TerminalSize sizeOf(int terminal) {
  winsize size{};
  EXPECT_EQ(ioctl(terminal, TIOCGWINSZ, &size), 0);
  return {.rows = size.ws_row, .columns = size.ws_col, .pixelWidth = size.ws_xpixel, .pixelHeight = size.ws_ypixel};
}

class PseudoTerminalTest : public testing::Test {
 protected:
  void SetUp() override {
    auto opened = openPseudoTerminal();
    ASSERT_TRUE(opened) << opened.reason();
    terminal = std::move(opened.value());
  }

  PseudoTerminal terminal;
};

TEST_F(PseudoTerminalTest, ConnectsItsTwoEnds) {
  EXPECT_TRUE(isatty(terminal.master.get()));
  EXPECT_TRUE(isatty(terminal.slave.get()));
  ASSERT_EQ(write(terminal.slave.get(), "out", 3), 3);
  std::array<char, 8> buffer{};
  EXPECT_EQ(read(terminal.master.get(), buffer.data(), buffer.size()), 3);
  EXPECT_STREQ(buffer.data(), "out");
}

TEST_F(PseudoTerminalTest, IsNotInheritedByChildren) {
  EXPECT_EQ(fcntl(terminal.master.get(), F_GETFD), FD_CLOEXEC);
  EXPECT_EQ(fcntl(terminal.slave.get(), F_GETFD), FD_CLOEXEC);
}

TEST_F(PseudoTerminalTest, HasNoWindowSizeAtFirst) {
  EXPECT_EQ(sizeOf(terminal.slave.get()), TerminalSize{});
}

TEST_F(PseudoTerminalTest, GetsItsWindowSizeFromTheMaster) {
  const TerminalSize size{.rows = 24, .columns = 80, .pixelWidth = 640, .pixelHeight = 384};
  EXPECT_TRUE(setWindowSize(terminal.master.get(), size));
  EXPECT_EQ(sizeOf(terminal.slave.get()), size);
}

TEST_F(PseudoTerminalTest, ClampsASizeThatTheKernelCannotHold) {
  EXPECT_TRUE(setWindowSize(terminal.master.get(), {.rows = -5, .columns = 100000, .pixelWidth = 65535}));
  EXPECT_EQ(sizeOf(terminal.slave.get()), (TerminalSize{.rows = 0, .columns = 65535, .pixelWidth = 65535}));
}

TEST(SetWindowSize, FailsIfTheDescriptorIsNotATerminal) {
  auto pipe = makePipe();
  ASSERT_TRUE(pipe);
  EXPECT_FALSE(setWindowSize(pipe.value().reader.get(), {.rows = 24, .columns = 80}));
  EXPECT_FALSE(setWindowSize(-1, {.rows = 24, .columns = 80}));
}

}  // namespace
}  // namespace zolt
