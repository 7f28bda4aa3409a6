#include "platform/ProcessLeash.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <optional>

#include "platform/ChildRun.h"
#include "support/ProcessFacts.h"

namespace zolt {
namespace {

using test::ChildRun;
using test::testChild;
using test::waitFor;

ChildProcess::Request heldBy(ProcessLeash& leash, ChildProcess::Request request) {
  const auto group = leash.group();
  EXPECT_TRUE(group);
  if (group) request.group = group.value();
  return request;
}

TEST(ProcessLeash, InterruptsItsGroupWhenLetGo) {
  ProcessLeash leash;
  ChildRun run(heldBy(leash, testChild({"wait"})));
  EXPECT_TRUE(run.says("waiting\n"));
  leash.letGo();
  EXPECT_TRUE(run.ends());
  EXPECT_EQ(run.child().terminationStatus(), SIGINT);
}

TEST(ProcessLeash, KillsAChildThatIgnoresTheInterrupt) {
  ProcessLeash leash;
  ChildRun run(heldBy(leash, testChild({"deaf"})));
  EXPECT_TRUE(run.says("deaf\n"));
  const pid_t leader = leash.group().value();
  leash.letGo();
  EXPECT_TRUE(run.ends());
  EXPECT_EQ(run.child().terminationStatus(), SIGKILL);
  EXPECT_TRUE(waitFor([&] { return !test::processExists(leader); }));
}

TEST(ProcessLeash, EndsItsGroupWhenDestroyed) {
  std::optional<ProcessLeash> leash(std::in_place);
  ChildRun run(heldBy(*leash, testChild({"wait"})));
  EXPECT_TRUE(run.says("waiting\n"));
  leash.reset();
  EXPECT_TRUE(run.ends());
}

TEST(ProcessLeash, KillsItsGroupAtOnceWhenTold) {
  ProcessLeash leash;
  ChildRun run(heldBy(leash, testChild({"wait"})));
  EXPECT_TRUE(run.says("waiting\n"));
  leash.kill();
  EXPECT_TRUE(run.ends());
  EXPECT_EQ(run.child().terminationStatus(), SIGKILL);
}

TEST(ProcessLeash, HasOneGroupForAllChildren) {
  ProcessLeash leash;
  const auto group = leash.group();
  ASSERT_TRUE(group);
  EXPECT_EQ(leash.group().value(), group.value());
  EXPECT_EQ(getpgid(group.value()), group.value());
  EXPECT_EQ(getsid(group.value()), getsid(0));
  EXPECT_NE(group.value(), getpgrp());
}

TEST(ProcessLeash, CreatesAnotherGroupIfTheLeaderWasKilled) {
  ProcessLeash leash;
  const pid_t first = leash.group().value();
  kill(first, SIGKILL);
  ASSERT_TRUE(waitFor([&] { return !test::processExists(first); }));
  ASSERT_TRUE(waitFor([&] { return leash.group().value() != first; }));
  ChildRun run(heldBy(leash, testChild({"wait"})));
  EXPECT_TRUE(run.launched);
  leash.kill();
}

TEST(ProcessLeash, LeavesTheRestOfTheProcessAlone) {
  ProcessLeash leash;
  ChildRun outside(testChild({"wait"}));
  ChildRun inside(heldBy(leash, testChild({"wait"})));
  EXPECT_TRUE(outside.says("waiting\n") && inside.says("waiting\n"));
  leash.kill();
  EXPECT_TRUE(inside.ends());
  EXPECT_TRUE(outside.child().isRunning());
  outside.child().terminate();
  EXPECT_TRUE(outside.ends());
}

}  // namespace
}  // namespace zolt
