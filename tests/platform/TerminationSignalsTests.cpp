#include "platform/TerminationSignals.h"

#include <gtest/gtest.h>

#include <csignal>

#include "support/WaitFor.h"

namespace zolt {
namespace {

TEST(TerminationSignals, CallTheHandlerInsteadOfEndingTheProcess) {
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) {
    int asked = 0;
    const TerminationSignals signals([&] { ++asked; });
    std::raise(signal);
    EXPECT_EQ(asked, 0) << "never from within the signal handler";
    EXPECT_TRUE(test::waitFor([&] { return asked == 1; }));
  }
}

TEST(TerminationSignals, HaveTheirDefaultEffectOnceTheObjectIsGone) {
  {
    const TerminationSignals signals([] {});
  }
  EXPECT_EXIT(std::raise(SIGTERM), testing::KilledBySignal(SIGTERM), "");
}

TEST(TerminationSignals, EndTheProcessOnTheSecondRequest) {
  EXPECT_EXIT(
      {
        const TerminationSignals signals([] {});
        std::raise(SIGTERM);
        std::raise(SIGTERM);
      },
      testing::KilledBySignal(SIGTERM), "");
}

TEST(TerminationSignals, StayIgnoredIfTheyWere) {
  std::signal(SIGHUP, SIG_IGN);
  {
    int asked = 0;
    const TerminationSignals signals([&] { ++asked; });
    std::raise(SIGHUP);
    test::runLoopFor(std::chrono::milliseconds(20));
    EXPECT_EQ(asked, 0);
  }
  EXPECT_EQ(std::signal(SIGHUP, SIG_DFL), SIG_IGN);
}

}  // namespace
}  // namespace zolt
