#include "vt/input/Mouse.h"

#include <gtest/gtest.h>

#include <climits>
#include <string>

#include "vt/KeyEvents.h"

namespace zolt::vt {
namespace {

using enum MouseTracking;

MouseEvent mouse(MouseAction action, MouseButton button, Position cell = {}, Modifiers held = {}) {
  MouseEvent event;
  event.action = action;
  event.button = button;
  event.modifiers = held;
  event.cell = cell;
  return event;
}

MouseEvent press(MouseButton button, Position cell = {}, Modifiers held = {}) {
  return mouse(MouseAction::Press, button, cell, held);
}

MouseEvent release(MouseButton button, Position cell = {}, Modifiers held = {}) {
  return mouse(MouseAction::Release, button, cell, held);
}

MouseEvent motion(Position cell, Modifiers held = {}) {
  return mouse(MouseAction::Motion, MouseButton::None, cell, held);
}

MouseEvent pixels(MouseEvent event, PixelPosition pixel) {
  event.pixel = pixel;
  return event;
}

constexpr MouseModes sgr(MouseTracking tracking) {
  return {tracking, MouseEncoding::Sgr};
}

// The report of one event by a fresh reporter.
std::string told(const MouseEvent& event, const MouseModes& modes) {
  return shown(MouseReporter().report(event, modes));
}

constexpr MouseButton kButtons[] = {MouseButton::Left,       MouseButton::Middle,    MouseButton::Right,
                                    MouseButton::WheelUp,    MouseButton::WheelDown, MouseButton::WheelLeft,
                                    MouseButton::WheelRight, MouseButton::Back,      MouseButton::Forward,
                                    MouseButton::Button10,   MouseButton::Button11};

TEST(VtMouse, ReportsNothingUnlessTracked) {
  for (const auto encoding : {MouseEncoding::Default, MouseEncoding::Sgr, MouseEncoding::SgrPixels}) {
    EXPECT_EQ(told(press(MouseButton::Left), {Off, encoding}), "");
    EXPECT_EQ(told(release(MouseButton::Left), {Off, encoding}), "");
    EXPECT_EQ(told(motion({1, 1}), {Off, encoding}), "");
  }
}

TEST(VtMouse, NumbersButtons) {
  const std::string codes[] = {"0", "1", "2", "64", "65", "66", "67", "128", "129", "130", "131"};
  for (std::size_t i = 0; i < std::size(kButtons); ++i) {
    EXPECT_EQ(told(press(kButtons[i], {2, 4}), sgr(Normal)), "^[[<" + codes[i] + ";5;3M");
  }
}

TEST(VtMouse, ReportsReleasesExceptOfTheWheel) {
  const std::string codes[] = {"0", "1", "2", "", "", "", "", "128", "129", "130", "131"};
  for (std::size_t i = 0; i < std::size(kButtons); ++i) {
    const std::string expected = codes[i].empty() ? "" : "^[[<" + codes[i] + ";1;1m";
    EXPECT_EQ(told(release(kButtons[i]), sgr(Normal)), expected);
    EXPECT_EQ(told(release(kButtons[i]), {Normal, MouseEncoding::Default}), codes[i].empty() ? "" : "^[[M#!!");
    EXPECT_EQ(told(release(kButtons[i]), {Normal, MouseEncoding::Utf8}), codes[i].empty() ? "" : "^[[M#!!");
    EXPECT_EQ(told(release(kButtons[i]), {Normal, MouseEncoding::Urxvt}), codes[i].empty() ? "" : "^[[35;1;1M");
  }
  EXPECT_EQ(told(release(MouseButton::None), sgr(AnyEvent)), "");
  EXPECT_EQ(told(press(MouseButton::None), sgr(AnyEvent)), "");
}

TEST(VtMouse, AddsModifiers) {
  struct Row {
    Modifiers held;
    std::string code;
  };
  const Row rows[] = {
      {Modifier::Shift, "4"},
      {Modifier::Alt, "8"},
      {Modifier::Meta, "8"},
      {Modifier::Alt | Modifier::Meta, "8"},
      {Modifier::Control, "16"},
      {Modifier::Shift | Modifier::Alt | Modifier::Control, "28"},
      {kLocks | Modifier::Super | Modifier::Hyper, "0"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(told(press(MouseButton::Left, {0, 0}, row.held), sgr(Normal)), "^[[<" + row.code + ";1;1M");
    EXPECT_EQ(told(release(MouseButton::Left, {0, 0}, row.held), sgr(Normal)), "^[[<" + row.code + ";1;1m");
  }
  EXPECT_EQ(told(motion({0, 0}, Modifier::Control), sgr(AnyEvent)), "^[[<51;1;1M");
  EXPECT_EQ(told(release(MouseButton::Left, {0, 0}, Modifier::Shift), {Normal, MouseEncoding::Default}), "^[[M'!!");
}

TEST(VtMouse, ReportsOnlyPressesOfThreeButtonsInX10Mode) {
  const MouseModes modes = {X10, MouseEncoding::Default};
  EXPECT_EQ(told(press(MouseButton::Left, {1, 2}), modes), "^[[M #\"");
  EXPECT_EQ(told(press(MouseButton::Middle, {1, 2}), modes), "^[[M!#\"");
  EXPECT_EQ(told(press(MouseButton::Right, {1, 2}, Modifier::Control), modes), "^[[M\"#\"");
  EXPECT_EQ(told(press(MouseButton::WheelUp), modes), "");
  EXPECT_EQ(told(press(MouseButton::Back), modes), "");
  EXPECT_EQ(told(release(MouseButton::Left), modes), "");
  MouseReporter reporter;
  reporter.report(press(MouseButton::Left), modes);
  EXPECT_EQ(reporter.report(motion({3, 3}), modes), "");
  EXPECT_EQ(told(press(MouseButton::Right, {1, 2}), sgr(X10)), "^[[<2;3;2M");
}

TEST(VtMouse, ReportsMotionIfItIsTracked) {
  for (const MouseTracking tracking : {Normal, ButtonEvent, AnyEvent}) {
    MouseReporter reporter;
    const auto report = [&](const MouseEvent& event) { return shown(reporter.report(event, sgr(tracking))); };
    EXPECT_EQ(report(motion({1, 1})), tracking == AnyEvent ? "^[[<35;2;2M" : "");
    EXPECT_EQ(report(press(MouseButton::Right, {1, 1})), "^[[<2;2;2M");
    EXPECT_EQ(report(motion({1, 2})), tracking == Normal ? "" : "^[[<34;3;2M");
    EXPECT_EQ(report(release(MouseButton::Right, {1, 2})), "^[[<2;3;2m");
    EXPECT_EQ(report(motion({1, 3})), tracking == AnyEvent ? "^[[<35;4;2M" : "");
  }
}

TEST(VtMouse, ReportsMotionOncePerCell) {
  MouseReporter reporter;
  const auto report = [&](const MouseEvent& event) { return shown(reporter.report(event, sgr(AnyEvent))); };
  EXPECT_EQ(report(pixels(motion({1, 1}), {10, 20})), "^[[<35;2;2M");
  EXPECT_EQ(report(pixels(motion({1, 1}), {11, 20})), "");
  EXPECT_EQ(report(motion({2, 1})), "^[[<35;2;3M");
  EXPECT_EQ(report(motion({1, 1})), "^[[<35;2;2M");
  EXPECT_EQ(report(press(MouseButton::Left, {1, 1})), "^[[<0;2;2M");
  EXPECT_EQ(report(motion({1, 1})), "");
  EXPECT_EQ(report(press(MouseButton::WheelUp, {5, 5})), "^[[<64;6;6M");
  EXPECT_EQ(report(motion({5, 5})), "");
}

TEST(VtMouse, ReportsMotionOncePerPixel) {
  MouseReporter reporter;
  const MouseModes modes = {AnyEvent, MouseEncoding::SgrPixels};
  const auto report = [&](const MouseEvent& event) { return shown(reporter.report(event, modes)); };
  EXPECT_EQ(report(pixels(motion({1, 1}), {10, 20})), "^[[<35;11;21M");
  EXPECT_EQ(report(pixels(motion({1, 1}), {11, 20})), "^[[<35;12;21M");
  EXPECT_EQ(report(pixels(motion({2, 2}), {11, 20})), "");
  EXPECT_EQ(report(pixels(press(MouseButton::Left, {2, 2}), {11, 20})), "^[[<0;12;21M");
  EXPECT_EQ(report(pixels(release(MouseButton::Left, {2, 2}), {3000, 2000})), "^[[<0;3001;2001m");
}

TEST(VtMouse, ReportsAPositionAgainAfterAChangeOfModes) {
  MouseReporter reporter;
  EXPECT_EQ(shown(reporter.report(motion({1, 1}), sgr(AnyEvent))), "^[[<35;2;2M");
  EXPECT_EQ(shown(reporter.report(motion({1, 1}), sgr(Off))), "");
  EXPECT_EQ(shown(reporter.report(motion({1, 1}), sgr(AnyEvent))), "^[[<35;2;2M");
  EXPECT_EQ(shown(reporter.report(motion({1, 1}), {AnyEvent, MouseEncoding::Urxvt})), "^[[67;2;2M");
}

TEST(VtMouse, KnowsWhichButtonsAreHeld) {
  MouseReporter reporter;
  const auto report = [&](const MouseEvent& event) { return shown(reporter.report(event, sgr(AnyEvent))); };
  reporter.report(press(MouseButton::Right), sgr(Off));
  EXPECT_EQ(report(motion({1, 0})), "^[[<34;1;2M");
  EXPECT_EQ(report(press(MouseButton::Left, {1, 0})), "^[[<0;1;2M");
  EXPECT_EQ(report(motion({2, 0})), "^[[<32;1;3M");
  EXPECT_EQ(report(release(MouseButton::Left, {2, 0})), "^[[<0;1;3m");
  EXPECT_EQ(report(motion({3, 0})), "^[[<34;1;4M");
  report(press(MouseButton::WheelUp, {3, 0}));
  report(press(MouseButton::Back, {3, 0}));
  EXPECT_EQ(report(release(MouseButton::Right, {3, 0})), "^[[<2;1;4m");
  EXPECT_EQ(report(motion({4, 0})), "^[[<160;1;5M");
  reporter.releaseAll();
  EXPECT_EQ(report(motion({5, 0})), "^[[<35;1;6M");
}

TEST(VtMouse, DropsPositionsThatDoNotFitInAByte) {
  const MouseModes modes = {Normal, MouseEncoding::Default};
  EXPECT_EQ(told(press(MouseButton::Left, {222, 222}), modes), "^[[M \xFF\xFF");
  EXPECT_EQ(told(press(MouseButton::Left, {223, 0}), modes), "");
  EXPECT_EQ(told(press(MouseButton::Left, {0, 223}), modes), "");
  const Modifiers all = Modifier::Shift | Modifier::Alt | Modifier::Control;
  EXPECT_EQ(told(press(MouseButton::Button11, {0, 0}, all), modes), "^[[M\xBF!!");
}

TEST(VtMouse, EncodesPositionsAsCharacters) {
  const MouseModes modes = {Normal, MouseEncoding::Utf8};
  EXPECT_EQ(told(press(MouseButton::Left, {94, 93}), modes), "^[[M ~^?");
  EXPECT_EQ(told(press(MouseButton::Left, {0, 95}), modes), "^[[M \u0080!");
  EXPECT_EQ(told(press(MouseButton::Left, {2014, 300}), modes), "^[[M \u014D\u07FF");
  EXPECT_EQ(told(press(MouseButton::Back), modes), "^[[M\u00A0!!");
  EXPECT_EQ(told(press(MouseButton::Left, {2015, 0}), modes), "");
  EXPECT_EQ(told(press(MouseButton::Left, {0, 2015}), modes), "");
}

TEST(VtMouse, EncodesAnyPositionAsNumbers) {
  EXPECT_EQ(told(press(MouseButton::Left, {4999, 9999}), sgr(Normal)), "^[[<0;10000;5000M");
  EXPECT_EQ(told(press(MouseButton::Left, {INT_MAX, INT_MAX}), sgr(Normal)), "^[[<0;2147483648;2147483648M");
  EXPECT_EQ(told(press(MouseButton::Left, {INT_MIN, -1}), sgr(Normal)), "^[[<0;1;1M");
  EXPECT_EQ(told(press(MouseButton::Left, {INT_MAX, INT_MAX}), {Normal, MouseEncoding::Default}), "");
  EXPECT_EQ(told(press(MouseButton::Middle, {4999, 9999}), {Normal, MouseEncoding::Urxvt}), "^[[33;10000;5000M");
  EXPECT_EQ(told(pixels(press(MouseButton::Left), {-5, -1}), {Normal, MouseEncoding::SgrPixels}), "^[[<0;1;1M");
}

TEST(VtMouse, ScrollsTheAlternateScreenWithCursorKeys) {
  EXPECT_EQ(shown(alternateScroll(3, false)), "^[[A^[[A^[[A");
  EXPECT_EQ(shown(alternateScroll(-2, false)), "^[[B^[[B");
  EXPECT_EQ(shown(alternateScroll(1, true)), "^[OA");
  EXPECT_EQ(shown(alternateScroll(-1, true)), "^[OB");
  EXPECT_EQ(alternateScroll(0, true), "");
  EXPECT_EQ(alternateScroll(INT_MIN, true).size(), 3000U);
  EXPECT_EQ(alternateScroll(INT_MAX, true).size(), 3000U);
}

}  // namespace
}  // namespace zolt::vt
