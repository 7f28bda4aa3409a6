#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

#include "base/CheckedMath.h"
#include "base/Fatal.h"

namespace zolt {
namespace {

constexpr std::int64_t kGreatest = std::numeric_limits<std::int64_t>::max();

TEST(FatalError, WritesTheReasonAndStopsTheProgram) {
  EXPECT_DEATH(fatalError("the reason"), "zolt: fatal: the reason\n");
}

TEST(Precondition, StopsTheProgramOnlyWhereItIsBroken) {
  precondition(true, "never seen");
  EXPECT_DEATH(precondition(false, "broken"), "zolt: fatal: broken");
}

TEST(CheckedMath, GivesExactResultsUpToTheLimits) {
  EXPECT_EQ(checkedAdd(kGreatest - 1, 1), kGreatest);
  EXPECT_EQ(checkedAdd(-5, 3), -2);
  EXPECT_EQ(checkedMultiply(kGreatest / 2, 2), kGreatest - 1);
}

TEST(CheckedMath, StopsTheProgramInsteadOfWrappingAround) {
  EXPECT_DEATH(static_cast<void>(checkedAdd(kGreatest, 1)), "overflow in an addition");
  EXPECT_DEATH(static_cast<void>(checkedMultiply(kGreatest, 2)), "overflow in a multiplication");
}

}  // namespace
}  // namespace zolt
