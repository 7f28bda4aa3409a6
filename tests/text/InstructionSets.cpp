#include "text/InstructionSets.h"

#include <gtest/gtest.h>
#include <hwy/highway.h>

namespace zolt {

void withEveryInstructionSet(const std::function<void()>& test) {
  for (const std::int64_t target : hwy::SupportedAndGeneratedTargets()) {
    SCOPED_TRACE(hwy::TargetName(target));
    hwy::GetChosenTarget().Update(target);
    test();
  }
  hwy::GetChosenTarget().DeInit();  // the best one again
}

}  // namespace zolt
