// The program itself, where it needs no window.
#include <gtest/gtest.h>
#include <unistd.h>

#include <string>
#include <utility>
#include <vector>

#include "app/CommandLine.h"
#include "platform/ChildProcess.h"
#include "platform/Pipe.h"
#include "support/WaitFor.h"

namespace zolt {
namespace {

struct Outcome {
  int status = -1;
  ChildProcess::Reason reason = ChildProcess::Reason::Exit;
  std::string output;
  std::string error;
};

enum class Reader { Reads, HasGone };

std::string contentOf(int descriptor) {
  std::string content;
  char buffer[4096];
  ssize_t got = 0;
  while ((got = read(descriptor, buffer, sizeof buffer)) > 0) {
    content.append(buffer, static_cast<std::size_t>(got));
  }
  return content;
}

Outcome run(std::vector<std::string> arguments, Reader reader = Reader::Reads) {
  Pipe output = std::move(makePipe().value());
  Pipe error = std::move(makePipe().value());
  if (reader == Reader::HasGone) output.reader.reset();
  ChildProcess zolt({.executable = ZOLT_PROGRAM,
                     .arguments = std::move(arguments),
                     .environment = processEnvironment(),
                     .standardOutput = output.writer.get(),
                     .standardError = error.writer.get()});
  const auto launched = zolt.launch();
  EXPECT_TRUE(launched) << launched.reason();
  output.writer.reset();
  error.writer.reset();
  Outcome outcome;
  if (reader == Reader::Reads) outcome.output = contentOf(output.reader.get());
  outcome.error = contentOf(error.reader.get());
  EXPECT_TRUE(test::waitFor([&] { return !zolt.isRunning(); }));
  outcome.status = zolt.terminationStatus();
  outcome.reason = zolt.terminationReason();
  return outcome;
}

TEST(Program, PrintsItsHelpAndItsVersion) {
  const Outcome help = run({"--help"});
  EXPECT_EQ(help.status, 0);
  EXPECT_EQ(help.output, CommandLine::helpText());
  const Outcome version = run({"--version"});
  EXPECT_EQ(version.status, 0);
  EXPECT_EQ(version.output, CommandLine::versionText());
}

TEST(Program, IsNotKilledByAReaderThatHasGone) {
  const Outcome outcome = run({"--help"}, Reader::HasGone);
  EXPECT_EQ(outcome.reason, ChildProcess::Reason::Exit);
  EXPECT_EQ(outcome.status, 0);
}

}  // namespace
}  // namespace zolt
