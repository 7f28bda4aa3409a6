// What the compiler must refuse cannot be run: these tests ask it.
#include <gtest/gtest.h>

#include <tuple>
#include <type_traits>

#include "canvas/CanvasLiterals.h"

namespace zolt {
namespace {

template <class A, class B>
concept Addable = requires(A a, B b) {
  a + b;
};
template <class A, class B>
concept Comparable = requires(A a, B b) {
  a < b;
};
template <class A, class B>
concept Multipliable = requires(A a, B b) {
  a* b;
};

template <class Unit>
class CanvasUnitTest : public testing::Test {};

using Units = testing::Types<DevicePixels, LogicalPixels, TextPosition, CanvasRow, CanvasColumn>;
TYPED_TEST_SUITE(CanvasUnitTest, Units);

TYPED_TEST(CanvasUnitTest, IsMadeOfANumberOnlyWhenSaidSoAndNeverBecomesOne) {
  EXPECT_FALSE((std::is_convertible_v<int, TypeParam>));
  EXPECT_FALSE((std::is_convertible_v<double, TypeParam>));
  EXPECT_FALSE((std::is_convertible_v<TypeParam, int>));
  EXPECT_TRUE((std::is_constructible_v<TypeParam, int>));
}

TYPED_TEST(CanvasUnitTest, IsNotMixedWithAnother) {
  const auto mixes = []<class Other>(std::type_identity<Other>) {
    return !std::is_same_v<Other, TypeParam> &&
           (Addable<TypeParam, Other> || Comparable<TypeParam, Other> || Multipliable<TypeParam, Other> ||
            std::is_constructible_v<TypeParam, Other>);
  };
  EXPECT_FALSE(mixes(std::type_identity<DevicePixels>()));
  EXPECT_FALSE(mixes(std::type_identity<LogicalPixels>()));
  EXPECT_FALSE(mixes(std::type_identity<TextPosition>()));
  EXPECT_FALSE(mixes(std::type_identity<CanvasRow>()));
  EXPECT_FALSE(mixes(std::type_identity<CanvasColumn>()));
}

TYPED_TEST(CanvasUnitTest, CostsWhatItsNumberCosts) {
  EXPECT_TRUE(std::is_trivially_copyable_v<TypeParam>);
  EXPECT_EQ(sizeof(TypeParam), sizeof(TypeParam().value));
}

TEST(CanvasUnits, KnowOnlyTheArithmeticThatMakesSense) {
  EXPECT_FALSE((Addable<TextPosition, TextPosition>));
  EXPECT_FALSE((Addable<CanvasRow, CanvasRow>));
  EXPECT_FALSE((Addable<CanvasColumn, CanvasColumn>));
  EXPECT_FALSE((Addable<DevicePixels, int>));
  EXPECT_FALSE((Multipliable<DevicePixels, DevicePixels>));
  EXPECT_FALSE((Multipliable<DevicePixels, double>)) << "how it is rounded must be said";
  EXPECT_FALSE((std::is_constructible_v<DevicePixels, double>));
  EXPECT_EQ(5_pos + 3, 8_pos);
  EXPECT_EQ(8_pos - 5_pos, 3U);
  EXPECT_EQ(7_row + 2, 9_row);
  EXPECT_EQ(9_col - 7_col, 2);
  EXPECT_EQ(3 * 7_px + 1_px, 22_px);
  EXPECT_EQ(22_px / 7_px, 3);
  EXPECT_EQ(22_px / 7, 3_px);
}

TEST(CanvasUnits, CountNoCharactersInAnEmptyRange) {
  EXPECT_EQ((TextRange{.begin = 3_pos, .end = 8_pos}.length()), 5U);
  EXPECT_EQ((TextRange{.begin = 8_pos, .end = 3_pos}.length()), 0U);
}

}  // namespace
}  // namespace zolt
