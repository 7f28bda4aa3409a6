// How a number field reads its text, and which values a slider can represent.
#include <gtest/gtest.h>

#include <limits>

#include "controls/SliderScale.h"
#include "controls/WholeNumber.h"

namespace zolt {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kMin = std::numeric_limits<std::int64_t>::min();

TEST(WholeNumber, RoundsItsFractionHalfToEven) {
  const std::pair<const char*, std::int64_t> cases[] = {
      {"0", 0},       {"5000", 5000}, {"-5", -5},    {"+5", 5},      {"007", 7},        {" 12 ", 12},
      {"12.7", 13},   {"12.5", 12},   {"13.5", 14},  {"12.51", 13},  {"12.4999", 12},   {"-12.5", -12},
      {"-13.5", -14}, {"-0.7", -1},   {"-0.5", 0},   {".5", 0},      {".6", 1},         {"5.", 5},
      {"12.50", 12},  {"1.50", 2},    {"12.05", 12}, {"12.501", 13}, {"12.5000001", 13}};
  for (const auto& [text, number] : cases) {
    EXPECT_EQ(wholeNumber(QLatin1String(text)), number) << text;
  }
  EXPECT_EQ(wholeNumber(QStringLiteral("9223372036854775807")), kMax);
  EXPECT_EQ(wholeNumber(QStringLiteral("-9223372036854775808")), kMin);
  EXPECT_EQ(wholeNumber(QStringLiteral("9223372036854775807.4")), kMax);
}

TEST(WholeNumber, IsNothingForAnyOtherText) {
  for (const char* text : {"",
                           " ",
                           "-",
                           "+",
                           ".",
                           "-.",
                           "abc",
                           "12a",
                           "10,000",
                           "10 000",
                           "1e5",
                           "0x10",
                           "1.2.3",
                           "--5",
                           "9223372036854775808",
                           "-9223372036854775809",
                           "9223372036854775807.5",
                           "-9223372036854775808.6",
                           "99999999999999999999999",
                           "inf",
                           "nan"}) {
    EXPECT_EQ(wholeNumber(QLatin1String(text)), std::nullopt) << text;
  }
}

TEST(SliderScale, HasExactValuesAtItsEndsAndSteps) {
  constexpr SliderScale kTenths{.partsOfOne = 10, .first = 10, .last = 20, .keyStep = 1};
  const double expected[] = {1.0, 1.1, 1.2, 1.3, 1.4, 1.5, 1.6, 1.7, 1.8, 1.9, 2.0};
  for (int i = 0; i < 11; ++i) {
    EXPECT_EQ(kTenths.valueAt(10 + i), expected[i]);
    EXPECT_EQ(kTenths.positionOf(expected[i]), 10 + i);
  }
  constexpr SliderScale kFine{.partsOfOne = 10000, .first = 3000, .last = 10000, .keyStep = 100};
  EXPECT_EQ(kFine.valueAt(3000), 0.3);
  EXPECT_EQ(kFine.valueAt(10000), 1.0);
}

TEST(SliderScale, ClampsValuesOutOfRange) {
  constexpr SliderScale kWhole{.partsOfOne = 1, .first = 8, .last = 72, .keyStep = 1};
  EXPECT_EQ(kWhole.positionOf(3.5), 8);
  EXPECT_EQ(kWhole.positionOf(-kInfinity), 8);
  EXPECT_EQ(kWhole.positionOf(kNaN), 8);
  EXPECT_EQ(kWhole.positionOf(1e300), 72);
  EXPECT_EQ(kWhole.positionOf(kInfinity), 72);
  EXPECT_EQ(kWhole.positionOf(13.4), 13);
}

}  // namespace
}  // namespace zolt
