#include "settings/views/WindowPlace.h"

#include <gtest/gtest.h>

#include <array>
#include <limits>

namespace zolt {
namespace {

constexpr QSize kSize(600, 450);
const std::array kScreens{QRect(0, 0, 1920, 1040), QRect(1920, 0, 1280, 1024)};

TEST(WindowPlace, RoundTripsThroughItsText) {
  for (const QPoint place : {QPoint(0, 0), QPoint(120, 80), QPoint(-1500, -3),
                             QPoint(std::numeric_limits<int>::max(), std::numeric_limits<int>::min())}) {
    EXPECT_EQ(placeOf(placeText(place)), place);
  }
  EXPECT_EQ(placeText(QPoint(120, -80)), "120,-80");
}

TEST(WindowPlace, IsNothingForAnyOtherText) {
  for (const char* text : {"", ",", "1", "1,", ",2", "1,2,3", "1;2", "a,b", "1,2 ", " 1,2", "99999999999,1", "1.5,2"}) {
    EXPECT_EQ(placeOf(text), std::nullopt) << text;
  }
}

TEST(WindowPlace, IsKeptIfAScreenShowsAllOfTheWindow) {
  for (const QPoint place : {QPoint(0, 0), QPoint(700, 300), QPoint(1320, 590), QPoint(2000, 100)}) {
    EXPECT_EQ(placeOnScreens(place, kSize, kScreens), place);
  }
}

TEST(WindowPlace, MovesOntoTheScreenThatShowsMostOfTheWindow) {
  EXPECT_EQ(placeOnScreens(QPoint(-100, -20), kSize, kScreens), QPoint(0, 0));
  EXPECT_EQ(placeOnScreens(QPoint(1500, 900), kSize, kScreens), QPoint(1320, 590));
  EXPECT_EQ(placeOnScreens(QPoint(1800, 100), kSize, kScreens), QPoint(1920, 100));
  EXPECT_EQ(placeOnScreens(QPoint(3000, 900), kSize, kScreens), QPoint(2600, 574));
}

TEST(WindowPlace, IsNothingIfItsScreenIsGone) {
  const std::array left{kScreens[0]};
  EXPECT_EQ(placeOnScreens(QPoint(2000, 100), kSize, left), std::nullopt);
  EXPECT_EQ(placeOnScreens(QPoint(0, 2000), kSize, left), std::nullopt);
  EXPECT_EQ(placeOnScreens(QPoint(std::numeric_limits<int>::max(), std::numeric_limits<int>::min()), kSize, left),
            std::nullopt);
  EXPECT_EQ(placeOnScreens(QPoint(0, 0), kSize, {}), std::nullopt);
}

TEST(WindowPlace, KeepsTheTitleBarVisibleOnAScreenThatIsTooSmall) {
  const std::array small{QRect(10, 20, 400, 300)};
  EXPECT_EQ(placeOnScreens(QPoint(100, 100), kSize, small), QPoint(10, 20));
}

}  // namespace
}  // namespace zolt
