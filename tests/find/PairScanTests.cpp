#include "find/PairScan.h"

#include <gtest/gtest.h>

#include <vector>

#include "text/InstructionSets.h"

namespace zolt {
namespace {

// The buffers have exactly the necessary size, so that the address sanitizer detects any read past the end.

TEST(PairScan, FindsTheFirstPairAnywhereInTextOfAnyLength) {
  const NeedlePair pair{{.offset = 3, .value = 'x', .fold = 0}, {.offset = 0, .value = 'y', .fold = 0x20}};
  withEveryInstructionSet([&] {
    for (std::size_t starts = 0; starts <= 300; ++starts) {
      for (std::size_t at = 0; at <= starts; ++at) {
        std::vector<char> text(starts + 3, '.');
        // Half a pair before the first pair and another pair after it must not matter.
        if (at > 5) text[at - 5] = 'y';
        if (at > 0) text[at - 1] = 'x';
        for (const std::size_t place : {starts - 1, at}) {
          if (at == starts) break;
          text[place] = place % 2 == 0 ? 'y' : 'Y';
          text[place + 3] = 'x';
        }
        ASSERT_EQ(firstPair(text.data(), starts, pair), at) << starts;
      }
    }
  });
}

TEST(PairScan, DistinguishesAllByteValues) {
  withEveryInstructionSet([] {
    for (unsigned wanted = 0; wanted < 256; ++wanted) {
      const NeedleByte byte{.offset = 0, .value = static_cast<std::uint8_t>(wanted), .fold = 0};
      for (unsigned value = 0; value < 256; ++value) {
        const std::vector<char> text(100, static_cast<char>(value));
        ASSERT_EQ(firstPair(text.data(), text.size(), {byte, byte}), value == wanted ? 0 : text.size()) << value;
      }
    }
  });
}

}  // namespace
}  // namespace zolt
