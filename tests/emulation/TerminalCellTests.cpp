#include "emulation/TerminalCell.h"

#include <gtest/gtest.h>

#include <set>
#include <unordered_map>
#include <vector>

namespace zolt {
namespace {

using Case = TerminalColor::Case;

std::size_t hashOfColor(const TerminalColor& color) {
  return std::hash<TerminalColor>()(color);
}

// One of each case, every index, and direct colours that differ in one component.
std::vector<TerminalColor> differentColors() {
  std::vector<TerminalColor> colors;
  for (int number = 0; number <= 16; ++number) {
    colors.emplace_back(static_cast<Case>(number));
  }
  for (int index = 0; index < 256; ++index) {
    colors.push_back(TerminalColor::indexed(static_cast<std::uint8_t>(index)));
  }
  colors.push_back(TerminalColor::rgb(0, 0, 0));
  for (int value = 1; value < 256; ++value) {
    const auto component = static_cast<std::uint8_t>(value);
    colors.push_back(TerminalColor::rgb(component, 0, 0));
    colors.push_back(TerminalColor::rgb(0, component, 0));
    colors.push_back(TerminalColor::rgb(0, 0, component));
  }
  return colors;
}

TEST(TerminalCell, IsBlankWhenItIsMade) {
  const TerminalCell blank;
  EXPECT_EQ(blank.character, " ");
  EXPECT_EQ(blank.foregroundColor, TerminalColor(Case::Default));
  EXPECT_EQ(blank.backgroundColor, TerminalColor(Case::Default));
  EXPECT_TRUE(blank.attributes.isEmpty());
}

TEST(TerminalCell, EqualsAnotherExactlyIfEveryFieldDoes) {
  EXPECT_EQ(TerminalCell{}, TerminalCell{});
  TerminalCell other;
  other.character = "x";
  EXPECT_NE(TerminalCell{}, other);
  other = {};
  other.foregroundColor = Case::Red;
  EXPECT_NE(TerminalCell{}, other);
  other = {};
  other.backgroundColor = Case::Red;
  EXPECT_NE(TerminalCell{}, other);
  other = {};
  other.attributes = CellAttributes::bold;
  EXPECT_NE(TerminalCell{}, other);
}

TEST(TerminalCell, IsAValue) {
  TerminalCell original;
  TerminalCell copy = original;
  copy.character = "x";
  copy.foregroundColor = Case::Green;
  EXPECT_EQ(original, TerminalCell{});
}

TEST(TerminalColor, FitsFourBytes) {
  EXPECT_EQ(sizeof(TerminalColor), 4u);
}

TEST(TerminalColor, NumbersItsCasesInOrder) {
  const std::vector<Case> order{Case::Default,      Case::Black,       Case::Red,           Case::Green,
                                Case::Yellow,       Case::Blue,        Case::Magenta,       Case::Cyan,
                                Case::White,        Case::BrightBlack, Case::BrightRed,     Case::BrightGreen,
                                Case::BrightYellow, Case::BrightBlue,  Case::BrightMagenta, Case::BrightCyan,
                                Case::BrightWhite,  Case::Rgb,         Case::Indexed};
  for (std::size_t number = 0; number < order.size(); ++number) {
    EXPECT_EQ(static_cast<std::size_t>(order[number]), number);
  }
}

TEST(TerminalColor, KeepsItsPayload) {
  const TerminalColor direct = TerminalColor::rgb(1, 2, 3);
  EXPECT_EQ(direct.kind(), Case::Rgb);
  EXPECT_EQ(direct.r(), 1);
  EXPECT_EQ(direct.g(), 2);
  EXPECT_EQ(direct.b(), 3);
  EXPECT_EQ(TerminalColor::indexed(200).kind(), Case::Indexed);
  EXPECT_EQ(TerminalColor::indexed(200).index(), 200);
}

TEST(TerminalColor, EqualsAnotherExactlyIfCaseAndPayloadDo) {
  const std::vector<TerminalColor> colors = differentColors();
  for (std::size_t i = 0; i < colors.size(); ++i) {
    for (std::size_t k = 0; k < colors.size(); ++k) {
      ASSERT_EQ(colors[i] == colors[k], i == k) << i << ' ' << k;
    }
  }
}

TEST(TerminalColor, TellsNamedIndexedAndDirectColorsApart) {
  EXPECT_NE(TerminalColor::indexed(0), TerminalColor(Case::Black));
  EXPECT_NE(TerminalColor::indexed(1), TerminalColor(Case::Red));
  EXPECT_NE(TerminalColor::rgb(0, 0, 0), TerminalColor(Case::Black));
  EXPECT_NE(TerminalColor::rgb(0, 0, 0), TerminalColor::indexed(0));
  EXPECT_NE(TerminalColor(Case::Default), TerminalColor(Case::White));
}

TEST(TerminalColor, IsFoundAgainAsAKey) {
  std::unordered_map<TerminalColor, std::size_t> numbers;
  const std::vector<TerminalColor> colors = differentColors();
  for (const TerminalColor& color : colors) {
    numbers.emplace(color, numbers.size());
  }
  ASSERT_EQ(numbers.size(), colors.size());
  const std::vector<TerminalColor> madeAgain = differentColors();
  for (std::size_t number = 0; number < madeAgain.size(); ++number) {
    const auto found = numbers.find(madeAgain[number]);
    ASSERT_NE(found, numbers.end()) << number;
    EXPECT_EQ(found->second, number);
  }
}

TEST(TerminalColor, HashesTheCaseAndEveryComponentInOrder) {
  std::set<std::size_t> hashes;
  for (const TerminalColor& color : differentColors()) {
    hashes.insert(hashOfColor(color));
  }
  EXPECT_EQ(hashes.size(), differentColors().size());
  EXPECT_NE(hashOfColor(TerminalColor::rgb(1, 2, 3)), hashOfColor(TerminalColor::rgb(3, 2, 1)));
}

}  // namespace
}  // namespace zolt
