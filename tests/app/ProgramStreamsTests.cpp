// The program with standard streams that are closed, full or broken.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <QTemporaryDir>
#include <QtGlobal>
#include <csignal>
#include <string>
#include <utility>
#include <vector>

#include "app/StandardStreams.h"
#include "platform/ChildProcess.h"
#include "platform/Pipe.h"
#include "support/ProcessFacts.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

constexpr int kStillRunning = -1;

// The status of a shell command; one that does not end within the limit is killed.
int statusOf(const std::string& command, int standardOutput = -1, int standardError = -1) {
  ChildProcess shell({.executable = "/bin/sh",
                      .arguments = {"-c", "exec " + command},
                      .environment = processEnvironment(),
                      .standardOutput = standardOutput,
                      .standardError = standardError});
  const auto launched = shell.launch();
  EXPECT_TRUE(launched) << launched.reason();
  if (test::waitFor([&] { return !shell.isRunning(); })) return shell.terminationStatus();
  shell.sendSignal(SIGKILL);
  shell.waitUntilExit();
  return kStillRunning;
}

Pipe fullPipe() {
  Pipe pipe = std::move(makePipe().value());
  fcntl(pipe.writer.get(), F_SETFL, O_WRONLY | O_NONBLOCK);
  for (const std::size_t size : {std::size_t{4096}, std::size_t{1}}) {
    while (write(pipe.writer.get(), std::string(size, 'x').data(), size) > 0) {
    }
  }
  fcntl(pipe.writer.get(), F_SETFL, O_WRONLY);
  return pipe;
}

const std::string kExit5 = ZOLT_PROGRAM " -e sh -c 'exit 5' ";

TEST(ProgramStreams, MayBeClosed) {
  for (const char* closed : {"<&-", ">&-", "2>&-", "<&- >&-", "<&- >&- 2>&-"}) {
    EXPECT_EQ(statusOf(kExit5 + closed), 5) << closed;
  }
}

TEST(ProgramStreams, AreTheNullDeviceWhereTheyWereClosed) {
  const QTemporaryDir folder;
  const std::string path = folder.path().toStdString();
  // What the program finds of its parent, which is Zolt: each stream's file, and whether it is open for reading (0) or
  // writing (1).
  const std::string facts =
      "for n in 0 1 2; do echo $(readlink /proc/$PPID/fd/$n) "
      "$(sed -n \"s/^flags:.*\\(.\\)$/\\1/p\" /proc/$PPID/fdinfo/$n); done >" +
      path + "/facts";
  EXPECT_EQ(statusOf(ZOLT_PROGRAM " -e sh -c '" + facts + "' <&- >&- 2>&-"), 0);
  EXPECT_EQ(test::fileContent(path + "/facts"), "/dev/null 0\n/dev/null 1\n/dev/null 1\n");
}

TEST(ProgramStreams, AreLeftAloneWhereTheyAreOpen) {
  const QTemporaryDir folder;
  const std::string path = folder.path().toStdString();
  EXPECT_EQ(statusOf(kExit5 + ">" + path + "/output <&-"), 5);
  EXPECT_EQ(test::fileContent(path + "/output"), "Terminal exited with code: 5\n");
}

TEST(ProgramStreams, MayBeFullPipesThatNobodyReads) {
  const Pipe full = fullPipe();
  EXPECT_EQ(statusOf(kExit5, full.writer.get()), 5) << "standard output";
  EXPECT_EQ(statusOf(kExit5, -1, full.writer.get()), 5) << "standard error";
  EXPECT_EQ(statusOf(kExit5, full.writer.get(), full.writer.get()), 5) << "both";
  // A message that the program prints itself.
  EXPECT_EQ(statusOf(ZOLT_PROGRAM " --screenshot /nonexistent/a.png -e true", -1, full.writer.get()), 1);
}

// The toolkit's messages come from the main thread as well.
TEST(ProgramStreams, MayBeFullWhenTheToolkitHasSomethingToSay) {
  const Pipe full = fullPipe();
  EXPECT_EQ(statusOf("env QT_LOGGING_RULES='*.debug=true' " + kExit5, -1, full.writer.get()), 5);
}

TEST(ToolkitMessages, ArePrintedButForWhatFontsLack) {
  printToolkitMessagesWithoutWaiting();
  testing::internal::CaptureStderr();
  qWarning("  OpenType support missing for \"%s\", script %d", "Noto Sans", 10);
  qWarning("something else");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "something else\n");
  qInstallMessageHandler(nullptr);
}

TEST(ProgramStreams, MayBePipesWhoseReaderHasGone) {
  Pipe broken = std::move(makePipe().value());
  broken.reader.reset();
  EXPECT_EQ(statusOf(kExit5, broken.writer.get()), 5) << "standard output";
  EXPECT_EQ(statusOf(kExit5, -1, broken.writer.get()), 5) << "standard error";
}

}  // namespace
}  // namespace zolt
