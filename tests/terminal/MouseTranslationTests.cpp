#include "terminal/input/MouseTranslation.h"

#include <gtest/gtest.h>

#include <limits>

namespace zolt {
namespace {

using vt::MouseButton;

TEST(MouseTranslation, ButtonsAreNumberedAsInTheWindowSystem) {
  struct Row {
    Qt::MouseButton qtButton;
    MouseButton button;
  };
  constexpr Row rows[] = {
      {Qt::LeftButton, MouseButton::Left},       {Qt::MiddleButton, MouseButton::Middle},
      {Qt::RightButton, MouseButton::Right},     {Qt::BackButton, MouseButton::Back},
      {Qt::ForwardButton, MouseButton::Forward}, {Qt::ExtraButton3, MouseButton::Button10},
      {Qt::ExtraButton4, MouseButton::Button11}, {Qt::ExtraButton5, MouseButton::None},
      {Qt::NoButton, MouseButton::None},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(translateButton(row.qtButton), row.button) << row.qtButton;
  }
}

TEST(MouseTranslation, StepsOfTheWheelAreButtons) {
  EXPECT_EQ(wheelButton(Qt::Vertical, 2), MouseButton::WheelUp);
  EXPECT_EQ(wheelButton(Qt::Vertical, -1), MouseButton::WheelDown);
  EXPECT_EQ(wheelButton(Qt::Horizontal, 1), MouseButton::WheelLeft);
  EXPECT_EQ(wheelButton(Qt::Horizontal, -1), MouseButton::WheelRight);
  EXPECT_EQ(wheelButton(Qt::Vertical, 0), MouseButton::None);
}

TEST(WheelSteps, ANotchIsAStepOrAsManyAsWanted) {
  WheelSteps wheel;
  EXPECT_EQ(wheel.addAngle({0, 120}), QPoint(0, 1));
  EXPECT_EQ(wheel.addAngle({0, -240}), QPoint(0, -2));
  EXPECT_EQ(wheel.addAngle({-120, 0}), QPoint(-1, 0));
  EXPECT_EQ(wheel.addAngle({0, 120}, 3), QPoint(0, 3));
  EXPECT_EQ(wheel.addAngle({0, 120}, 7), QPoint(0, 7));
}

TEST(WheelSteps, FractionsAddUp) {
  WheelSteps wheel;
  int steps = 0;
  for (int i = 0; i < 24; ++i) {
    const QPoint step = wheel.addAngle({0, 15}, 7);
    EXPECT_EQ(step.y(), (i + 1) * 105 / 120 - i * 105 / 120);
    steps += step.y();
  }
  EXPECT_EQ(steps, 21) << "three notches";
}

TEST(WheelSteps, PixelsAreStepsOfACell) {
  WheelSteps wheel;
  const QSize cell(8, 16);
  EXPECT_EQ(wheel.addPixels({0, 15}, cell), QPoint(0, 0));
  EXPECT_EQ(wheel.addPixels({0, 1}, cell), QPoint(0, 1));
  EXPECT_EQ(wheel.addPixels({-20, 40}, cell), QPoint(-2, 2));
  EXPECT_EQ(wheel.addPixels({-4, 8}, cell), QPoint(-1, 1));
}

TEST(WheelSteps, AChangeOfDirectionDropsTheRestOfThatDirectionOnly) {
  WheelSteps wheel;
  EXPECT_EQ(wheel.addAngle({110, 110}), QPoint(0, 0));
  EXPECT_EQ(wheel.addAngle({10, -110}), QPoint(1, 0));
  EXPECT_EQ(wheel.addAngle({0, -10}), QPoint(0, -1));
  EXPECT_EQ(wheel.addAngle({0, -110}), QPoint(0, 0));
  EXPECT_EQ(wheel.addAngle({0, 120}), QPoint(0, 1));
}

TEST(WheelSteps, NoMovementKeepsTheRest) {
  WheelSteps wheel;
  EXPECT_EQ(wheel.addAngle({0, 100}), QPoint(0, 0));
  EXPECT_EQ(wheel.addAngle({0, 0}), QPoint(0, 0));
  EXPECT_EQ(wheel.addAngle({0, 20}), QPoint(0, 1));
}

TEST(WheelSteps, AnotherUnitDropsTheRest) {
  WheelSteps wheel;
  wheel.addAngle({0, 119});
  EXPECT_EQ(wheel.addPixels({0, 1}, {120, 120}), QPoint(0, 0)) << "pixels after an angle";
  wheel.addPixels({0, 118}, {120, 120});
  EXPECT_EQ(wheel.addAngle({0, 1}), QPoint(0, 0)) << "an angle after pixels";
  wheel.addPixels({0, 15}, {8, 16});
  EXPECT_EQ(wheel.addPixels({0, 15}, {8, 30}), QPoint(0, 0)) << "another cell";
  wheel.addAngle({0, 119}, 1);
  EXPECT_EQ(wheel.addAngle({0, 1}, 2), QPoint(0, 0)) << "other steps a notch";
  wheel.addAngle({0, 100}, 2);
  wheel.reset();
  EXPECT_EQ(wheel.addAngle({0, 20}, 2), QPoint(0, 0)) << "reset";
}

TEST(WheelSteps, HugeMovementsDoNotOverflow) {
  constexpr int most = std::numeric_limits<int>::max();
  WheelSteps wheel;
  EXPECT_EQ(wheel.addAngle({-most, most}, 1000), QPoint(-most - 1, most));
  EXPECT_EQ(wheel.addPixels({most, -most - 1}, {1, 1}), QPoint(most, -most - 1));
}

}  // namespace
}  // namespace zolt
