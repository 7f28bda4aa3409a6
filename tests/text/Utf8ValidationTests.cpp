#include <gtest/gtest.h>

#include <array>
#include <string>

#include "text/GraphemeClusters.h"
#include "text/InstructionSets.h"
#include "text/NaiveUtf8.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

// Whether the validator agrees with the definition on `text`.
testing::AssertionResult agrees(std::string_view text) {
  const bool expected = naiveIsValidUtf8(text);
  if (isValidUtf8(text) == expected) return testing::AssertionSuccess();
  return testing::AssertionFailure() << escaped(text) << " is " << (expected ? "valid" : "invalid");
}

std::string bytes(std::initializer_list<int> values) {
  std::string result;
  for (const int value : values) {
    result += static_cast<char>(value);
  }
  return result;
}

TEST(Utf8Validation, AcceptsTheFirstAndTheLastScalarOfEachLength) {
  withEveryInstructionSet([] {
    EXPECT_TRUE(isValidUtf8(""));
    for (const char* text : {"\x01", "\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
                             "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
      EXPECT_TRUE(isValidUtf8(text)) << escaped(text);
    }
  });
}

TEST(Utf8Validation, RejectsOverlongFormsSurrogatesAndCodePointsBeyondUnicode) {
  withEveryInstructionSet([] {
    for (const char* text : {"\x80",
                             "\xBF",
                             "\xC0\x80",
                             "\xC1\xBF",
                             "\xC2",
                             "\xE0\x80\x80",
                             "\xE0\x9F\xBF",
                             "\xED\xA0\x80",
                             "\xED\xBF\xBF",
                             "\xE2\x82",
                             "\xF0\x80\x80\x80",
                             "\xF0\x8F\xBF\xBF",
                             "\xF0\x9F\x98",
                             "\xF4\x90\x80\x80",
                             "\xF5\x80\x80\x80",
                             "\xF8\x88\x80\x80\x80",
                             "\xFE",
                             "\xFF",
                             "\xE2\x28\xA1",
                             "a\xC2z"}) {
      EXPECT_FALSE(isValidUtf8(text)) << escaped(text);
    }
  });
}

TEST(Utf8Validation, AgreesWithTheDefinitionOnAllStringsOfOneAndTwoBytes) {
  withEveryInstructionSet([] {
    for (int a = 0; a < 256; ++a) {
      ASSERT_TRUE(agrees(bytes({a})));
      for (int b = 0; b < 256; ++b) {
        ASSERT_TRUE(agrees(bytes({a, b})));
      }
    }
  });
}

TEST(Utf8Validation, AgreesWithTheDefinitionOnStringsOfThreeAndFourBytesForEveryKindOfLeadByte) {
  constexpr std::array kLeads{0x00, 0x7F, 0x80, 0xBF, 0xC1, 0xC2, 0xDF, 0xE0, 0xE1, 0xEC,
                              0xED, 0xEE, 0xEF, 0xF0, 0xF1, 0xF3, 0xF4, 0xF5, 0xFF};
  constexpr std::array kLasts{0x00, 0x7F, 0x80, 0x8F, 0x90, 0x9F, 0xA0, 0xBF, 0xC0, 0xE0, 0xF0, 0xFF};
  withEveryInstructionSet([&] {
    for (const int lead : kLeads) {
      for (int b = 0; b < 256; ++b) {
        for (int c = 0; c < 256; ++c) {
          ASSERT_TRUE(agrees(bytes({lead, b, c})));
        }
        for (const int c : kLasts) {
          for (const int d : kLasts) {
            ASSERT_TRUE(agrees(bytes({lead, b, c, d})));
          }
        }
      }
    }
  });
}

TEST(Utf8Validation, FindsOneInvalidSequenceAnywhereInATextOfAnyLength) {
  const std::array<std::string, 7> kInvalid{"\x80",         "\xC2",     "\xE2\x82",        "\xED\xA0\x80",
                                            "\xF0\x9F\x98", "\xC0\xAF", "\xF4\x90\x80\x80"};
  withEveryInstructionSet([&] {
    for (std::size_t length = 0; length <= 200; length += length < 70 ? 1 : 13) {
      for (std::size_t at = 0; at <= length; ++at) {
        for (const std::string& invalid : kInvalid) {
          std::string text(length, 'a');
          text.insert(at, invalid);
          ASSERT_FALSE(isValidUtf8(text)) << escaped(text);
        }
        std::string text(length, 'a');
        text.insert(at, "\U0001F600");
        ASSERT_TRUE(isValidUtf8(text)) << escaped(text);
      }
    }
  });
}

TEST(Utf8Validation, AgreesWithTheDefinitionOnDamagedTextAtEveryAlignment) {
  withEveryInstructionSet([] {
    RandomText random(1);
    for (int round = 0; round < 60000; ++round) {
      std::string text = random.text(80).substr(0, 200);
      for (std::size_t damage = random.below(4); damage > 0 && !text.empty(); --damage) {
        const std::size_t at = random.below(text.size());
        switch (random.below(3)) {
          case 0:
            text[at] = static_cast<char>(random.below(256));
            break;
          case 1:
            text.erase(at, 1);
            break;
          default:
            text.insert(at, 1, static_cast<char>(0x80 + random.below(128)));
        }
      }
      const std::string_view shifted =
          std::string_view(text).substr(std::min<std::size_t>(random.below(32), text.size()));
      ASSERT_TRUE(agrees(text));
      ASSERT_TRUE(agrees(shifted));
    }
  });
}

TEST(Utf8Validation, ReadsNothingPastTheEnd) {
  // The bytes after the view would complete the last sequence.
  const std::string text = std::string(61, 'a') + "\xE2\x82\xAC";
  for (std::size_t length = 62; length < 64; ++length) {
    EXPECT_FALSE(isValidUtf8(std::string_view(text).substr(0, length)));
  }
  EXPECT_TRUE(isValidUtf8(text));
}

}  // namespace
}  // namespace zolt
