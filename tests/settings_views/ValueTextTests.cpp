#include <gtest/gtest.h>

#include <limits>

#include "settings/views/ValueTexts.h"

namespace zolt {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr std::int64_t kMax = std::numeric_limits<std::int64_t>::max();
constexpr std::int64_t kLeast = std::numeric_limits<std::int64_t>::min();

TEST(ValueTexts, DropTheFractionTowardsZero) {
  EXPECT_EQ(truncated(13.99), 13);
  EXPECT_EQ(truncated(-13.99), -13);
  EXPECT_EQ(truncated(-0.5), 0);
}

TEST(ValueTexts, AreClampedToTheRangeOfWholeNumbers) {
  EXPECT_EQ(truncated(1e300), kMax);
  EXPECT_EQ(truncated(9223372036854775808.0), kMax);
  EXPECT_EQ(truncated(9223372036854774784.0), 9223372036854774784);
  EXPECT_EQ(truncated(-9223372036854775808.0), kLeast);
  EXPECT_EQ(truncated(kInfinity), kMax);
  EXPECT_EQ(truncated(-kInfinity), kLeast);
  EXPECT_EQ(truncated(kNaN), 0);
}

TEST(ValueTexts, ShowPointsDecimalsAndPercent) {
  EXPECT_EQ(pointsText(14.0), QStringLiteral("14pt"));
  EXPECT_EQ(pointsText(13.5), QStringLiteral("13pt"));
  EXPECT_EQ(pointsText(-3.5), QStringLiteral("-3pt"));
  EXPECT_EQ(pointsText(kInfinity), QStringLiteral("9223372036854775807pt"));
  EXPECT_EQ(decimalText(1.2), QStringLiteral("1.2"));
  EXPECT_EQ(decimalText(2), QStringLiteral("2.0"));
  EXPECT_EQ(percentText(1.0), QStringLiteral("100%"));
  EXPECT_EQ(percentText(0.305), QStringLiteral("30%"));
  EXPECT_EQ(percentText(kInfinity), QStringLiteral("9223372036854775807%"));
}

TEST(ValueTexts, PercentIsTruncatedAfterTheMultiplicationAndSoMayBeOneLess) {
  EXPECT_EQ(percentText(0.29), QStringLiteral("28%"));
  EXPECT_EQ(percentText(0.57), QStringLiteral("56%"));
  EXPECT_EQ(percentText(0.5), QStringLiteral("50%"));
}

TEST(ValueTexts, ShowAContrastAsARatioAndNoneAsOff) {
  const std::pair<double, const char*> cases[] = {{1.0, "Off"}, {0.5, "Off"}, {1.5, "1.5:1"}, {7.0, "7.0:1"}};
  for (const auto& [value, text] : cases) {
    EXPECT_EQ(contrastText(value), QLatin1String(text));
  }
}

}  // namespace
}  // namespace zolt
