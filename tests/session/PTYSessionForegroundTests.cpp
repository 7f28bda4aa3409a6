#include <gtest/gtest.h>

#include <csignal>
#include <string>

#include "platform/ProcessName.h"
#include "session/SessionProbe.h"

namespace zolt {
namespace {

using test::SessionProbe;
using test::waitFor;

Shell interactiveShell() {
  return Shell{.name = "Shell", .executable = "/bin/sh", .args = {"-i"}, .icon = "terminal"};
}

TEST(PTYSessionForeground, IsTheProgramThatTheShellRuns) {
  SessionProbe probe;
  EXPECT_EQ(probe.session.foregroundProgram(), std::nullopt) << "before a start";
  ASSERT_TRUE(probe.session.start(interactiveShell()));
  EXPECT_EQ(probe.session.foregroundProgram(), std::nullopt) << "at the prompt";
  probe.session.write(std::string(ZOLT_TEST_CHILD) + " wait\n");
  ASSERT_TRUE(waitFor([&] { return probe.session.foregroundProgram().has_value(); }));
  EXPECT_TRUE(waitFor([&] { return processName(*probe.session.foregroundProgram()) == "testchild"; }));
  probe.session.sendSignal(SIGKILL);
  EXPECT_TRUE(waitFor([&] { return !probe.session.foregroundProgram(); })) << "at the prompt again";
  probe.session.terminate();
  EXPECT_EQ(probe.session.foregroundProgram(), std::nullopt) << "at the end";
}

// A shell without job control, or a program that runs in its place.
TEST(PTYSessionForeground, IsNoneWhereOnlyTheShellsOwnGroupRuns) {
  SessionProbe probe;
  ASSERT_TRUE(probe.session.start(test::program({"wait"})));
  ASSERT_TRUE(probe.shows("waiting"));
  EXPECT_EQ(probe.session.foregroundProgram(), std::nullopt);
}

}  // namespace
}  // namespace zolt
