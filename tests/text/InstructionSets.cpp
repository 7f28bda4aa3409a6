#include "text/InstructionSets.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

#include <vector>

namespace zolt {

void withEveryInstructionSet(const std::function<void()>& test) {
  const std::vector<std::int64_t> targets = hwy::SupportedAndGeneratedTargets();
  ASSERT_FALSE(targets.empty());
  for (const std::int64_t target : targets) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::GetChosenTarget().Update(target);
    test();
  }
  hwy::GetChosenTarget().DeInit();  // back to the best one
}

}  // namespace zolt
