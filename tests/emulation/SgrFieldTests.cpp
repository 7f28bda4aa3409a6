#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "emulation/SGR.h"
#include "emulation/StyledRuns.h"

namespace zolt {
namespace {

using Codes = std::vector<std::int64_t>;

Codes codesOf(std::string_view params) {
  Codes codes;
  parseSGRCodes(params, codes);
  return codes;
}

TEST(SgrFields, ThatAreMissingMeanCodeZero) {
  EXPECT_EQ(codesOf(""), (Codes{0}));
}

TEST(SgrFields, AreDroppedIfEmpty) {
  EXPECT_EQ(codesOf("1;;31"), (Codes{1, 31}));
  EXPECT_EQ(codesOf(";4;"), (Codes{4}));
  EXPECT_EQ(codesOf(";"), Codes{});
  EXPECT_EQ(codesOf(";;;"), Codes{});
}

TEST(SgrFields, OfASingleSemicolonLeaveTheStateUnchanged) {
  EXPECT_EQ(styleAfter("1;31m\x1B[;"), styleAfter("1;31"));
  EXPECT_NE(styleAfter("1;31m\x1B["), styleAfter("1;31"));
}

TEST(SgrFields, WithoutASingleNumberLeaveTheStateUnchanged) {
  EXPECT_EQ(styleAfter("1;31m\x1B[?25"), styleAfter("1;31"));
  EXPECT_EQ(styleAfter("1;31m\x1B[>0;?0"), styleAfter("1;31"));
}

TEST(SgrFields, MayHaveASign) {
  EXPECT_EQ(codesOf("+31;-7;-0;+0"), (Codes{31, -7, 0, 0}));
  EXPECT_EQ(styleAfter("+31"), styleAfter("31"));
  EXPECT_EQ(styleAfter("1;-0"), plainStyle());
}

TEST(SgrFields, AreSkippedIfTheSignIsAloneOrDoubled) {
  EXPECT_EQ(codesOf("+;-;1"), (Codes{1}));
  EXPECT_EQ(codesOf("+-1;-+1;++1;--1;1+;1-"), Codes{});
}

TEST(SgrFields, MayHaveLeadingZeros) {
  EXPECT_EQ(codesOf("0031;000000000000000000000000000001;-0007"), (Codes{31, 1, -7}));
}

TEST(SgrFields, AreSkippedIfTheyAreNotNumbers) {
  EXPECT_EQ(codesOf("?1;1?;0x1;1.5; 1;1 ;>4;1:2;4"), (Codes{4}));
  EXPECT_EQ(codesOf("1\n;\r\n1;4"), (Codes{4}));
  EXPECT_EQ(codesOf("\uFF11;1\u0301;\u0661;4"), (Codes{4}));  // digits of other scripts, and a digit with a mark
}

TEST(SgrFields, ReachTheLimitsOf64BitsAndAreSkippedBeyond) {
  EXPECT_EQ(codesOf("9223372036854775807;-9223372036854775808"),
            (Codes{std::numeric_limits<std::int64_t>::max(), std::numeric_limits<std::int64_t>::min()}));
  EXPECT_EQ(codesOf("9223372036854775808;-9223372036854775809;99999999999999999999999;+9223372036854775808"), Codes{});
  EXPECT_EQ(styleAfter("9223372036854775807"), plainStyle());
}

TEST(SgrFields, AreAlsoSeparatedByTheCanonicalEquivalentOfTheSemicolon) {
  EXPECT_EQ(codesOf("1\u037E31"), (Codes{1, 31}));
  EXPECT_EQ(codesOf("\u037E"), Codes{});
  EXPECT_EQ(styleAfter("1\u037E31"), styleAfter("1;31"));
}

TEST(SgrFields, AreNotSeparatedByASemicolonWithAMark) {
  EXPECT_EQ(codesOf("1;\u0301"
                    "31;4"),
            (Codes{4}));
  EXPECT_EQ(codesOf("1\u037E\u0301"
                    "31;4"),
            (Codes{4}));
  EXPECT_EQ(codesOf("1\u0600;31;4"), (Codes{4}));
}

TEST(SgrFields, AreAppendedToTheCodesThere) {
  Codes codes{7};
  parseSGRCodes("1;2", codes);
  EXPECT_EQ(codes, (Codes{7, 1, 2}));
}

}  // namespace
}  // namespace zolt
