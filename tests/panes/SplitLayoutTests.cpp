// Where the panes of a tab stand.
#include "panes/SplitLayout.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <random>
#include <string>
#include <vector>

namespace zolt {
namespace {

constexpr PaneSize kWhole{.width = 805, .height = 605};
constexpr PaneId a{1};
constexpr PaneId b{2};
constexpr PaneId c{3};
constexpr PaneId d{4};

PaneRect rectOf(const SplitLayout& layout, PaneId pane, const PaneSize& whole = kWhole) {
  const SplitLayout::Places places = layout.places(whole);
  const auto found = std::ranges::find(places.panes, pane, &SplitLayout::Place::pane);
  EXPECT_NE(found, places.panes.end());
  return found == places.panes.end() ? PaneRect() : found->rect;
}

TEST(SplitLayoutTest, GivesOnePaneEverything) {
  const SplitLayout layout(a);
  EXPECT_EQ(rectOf(layout, a), (PaneRect{.size = kWhole}));
  EXPECT_TRUE(layout.places(kWhole).dividers.empty());
}

TEST(SplitLayoutTest, HalvesThePaneThatIsSplitOnTheSideThatIsAskedFor) {
  struct Case {
    Direction side;
    PaneRect added;
    PaneRect kept;
  };
  for (const Case& each : {
           Case{Direction::Right, {.x = 405, .size = {400, 605}}, {.size = {400, 605}}},
           Case{Direction::Left, {.size = {400, 605}}, {.x = 405, .size = {400, 605}}},
           Case{Direction::Down, {.y = 305, .size = {805, 300}}, {.size = {805, 300}}},
           Case{Direction::Up, {.size = {805, 300}}, {.y = 305, .size = {805, 300}}},
       }) {
    SplitLayout layout(a);
    layout.split(a, each.side, b);
    EXPECT_EQ(rectOf(layout, b), each.added);
    EXPECT_EQ(rectOf(layout, a), each.kept);
  }
}

TEST(SplitLayoutTest, PutsPanesOfOneDirectionIntoOneRow) {
  SplitLayout layout(a);
  layout.split(a, Direction::Right, c);
  layout.split(a, Direction::Right, b);
  EXPECT_EQ(layout.panes(), (std::vector{a, b, c}));
  EXPECT_EQ(layout.root().parts.size(), 3U);
  EXPECT_EQ(layout.places(kWhole).dividers.size(), 2U);
}

TEST(SplitLayoutTest, StandsAsItsPartsDo) {
  SplitLayout before(a);
  before.split(a, Direction::Right, b);
  before.split(b, Direction::Down, c);
  before.split(c, Direction::Right, d);
  const SplitLayout again(before.root());
  EXPECT_EQ(again.panes(), before.panes());
  for (const PaneId pane : {a, b, c, d}) {
    EXPECT_EQ(rectOf(again, pane), rectOf(before, pane));
  }
}

TEST(SplitLayoutTest, MakesSharesAddUpAndJoinsRowsWithinRows) {
  const SplitLayout layout(SplitLayout::Part{
      .pane = {},
      .parts = {{.pane = a, .parts = {}, .share = 2},
                {.pane = {},
                 .parts = {{.pane = b, .parts = {}, .share = 5}, {.pane = c, .parts = {}, .share = 5}},
                 .share = 2}},
      .share = 9});
  EXPECT_EQ(layout.root().parts.size(), 3U);
  const int room = kWhole.width - 2 * SplitLayout::dividerBreadth;
  EXPECT_NEAR(rectOf(layout, a).size.width, room / 2.0, 1);
  EXPECT_NEAR(rectOf(layout, b).size.width, room / 4.0, 1);
}

TEST(SplitLayoutTest, TakesPanesThatStandTogetherAsTheyStand) {
  SplitLayout layout(a);
  SplitLayout added(b);
  added.split(b, Direction::Down, c);
  added.split(c, Direction::Right, d);
  layout.split(a, Direction::Left, added);
  EXPECT_EQ(layout.panes(), (std::vector{b, c, d, a}));
  EXPECT_EQ(rectOf(layout, a), (PaneRect{.x = 405, .size = {400, 605}}));
  EXPECT_EQ(rectOf(layout, b), (PaneRect{.size = {400, 300}}));
  EXPECT_EQ(rectOf(layout, c).size.height, 300);
  EXPECT_NEAR(rectOf(layout, d).size.width, 197, 1);
}

TEST(SplitLayoutTest, GivesTheRoomOfARemovedPaneToItsNeighboursInProportion) {
  SplitLayout layout(a);
  layout.split(a, Direction::Right, c);
  layout.split(a, Direction::Right, b);  // a quarter, a quarter, a half
  layout.remove(a);
  const int room = kWhole.width - SplitLayout::dividerBreadth;
  EXPECT_NEAR(rectOf(layout, b).size.width, room / 3.0, 1);
  EXPECT_NEAR(rectOf(layout, c).size.width, room * 2 / 3.0, 1);
  layout.remove(c);
  EXPECT_EQ(rectOf(layout, b), (PaneRect{.size = kWhole}));
}

TEST(SplitLayoutTest, IsARowAgainOnceTheColumnInItHasOnePane) {
  SplitLayout layout(a);
  layout.split(a, Direction::Right, b);
  layout.split(b, Direction::Down, c);
  layout.split(c, Direction::Right, d);
  layout.remove(b);
  EXPECT_EQ(layout.root().axis, SplitAxis::SideBySide);
  ASSERT_EQ(layout.root().parts.size(), 3U) << "c and d stand beside a, not in a row of their own";
  EXPECT_EQ(layout.panes(), (std::vector{a, c, d}));
}

TEST(SplitLayoutTest, SwapsPanesAndKeepsTheSizes) {
  SplitLayout layout(a);
  layout.split(a, Direction::Right, b);
  layout.split(b, Direction::Down, c);
  const PaneRect first = rectOf(layout, a);
  const PaneRect last = rectOf(layout, c);
  layout.swap(a, c);
  EXPECT_EQ(rectOf(layout, c), first);
  EXPECT_EQ(rectOf(layout, a), last);
}

TEST(SplitLayoutTest, EqualisesByThePanesThatStandBesideEachOther) {
  SplitLayout layout(a);
  layout.split(a, Direction::Right, b);
  layout.split(b, Direction::Right, c);
  layout.split(c, Direction::Down, d);
  const PaneSize whole{.width = 910, .height = 605};
  layout.equalise();
  EXPECT_EQ(rectOf(layout, a, whole).size.width, 300);
  EXPECT_EQ(rectOf(layout, b, whole).size.width, 300);
  EXPECT_EQ(rectOf(layout, c, whole).size, (PaneSize{300, 300}));
  EXPECT_EQ(rectOf(layout, d, whole).size, (PaneSize{300, 300}));
}

TEST(SplitLayoutTest, FindsTheNeighbourAtThePanesMiddle) {
  SplitLayout layout(a);  // a | b over c
  layout.split(a, Direction::Right, b);
  layout.split(b, Direction::Down, c);
  EXPECT_EQ(layout.neighbour(b, Direction::Left, kWhole), a);
  EXPECT_EQ(layout.neighbour(c, Direction::Left, kWhole), a);
  EXPECT_EQ(layout.neighbour(b, Direction::Down, kWhole), c);
  EXPECT_EQ(layout.neighbour(c, Direction::Up, kWhole), b);
  EXPECT_EQ(layout.neighbour(a, Direction::Left, kWhole), std::nullopt);
  EXPECT_EQ(layout.neighbour(c, Direction::Down, kWhole), std::nullopt);
  // The middle of a is in c once that is the larger.
  ASSERT_TRUE(layout.moveEdge(b, Direction::Up, 100, kWhole));
  EXPECT_EQ(layout.neighbour(a, Direction::Right, kWhole), c);
}

TEST(SplitLayoutTest, MovesTheDividerThatBoundsAPane) {
  SplitLayout layout(a);
  layout.split(a, Direction::Right, b);
  ASSERT_TRUE(layout.moveEdge(a, Direction::Right, 30, kWhole));
  EXPECT_EQ(rectOf(layout, a).size.width, 430);
  ASSERT_TRUE(layout.moveEdge(b, Direction::Left, 50, kWhole)) << "the last pane moves the divider before it";
  EXPECT_EQ(rectOf(layout, a).size.width, 380);
  EXPECT_FALSE(layout.moveEdge(a, Direction::Down, 10, kWhole)) << "nothing is split that way";
}

TEST(SplitLayoutTest, MovesTheDividerOfTheInnermostSplitOfThatDirection) {
  SplitLayout layout(a);  // a over b, within them c beside b
  layout.split(a, Direction::Down, b);
  layout.split(b, Direction::Right, c);
  ASSERT_TRUE(layout.moveEdge(c, Direction::Up, 40, kWhole));
  EXPECT_EQ(rectOf(layout, a).size.height, 260);
  EXPECT_EQ(rectOf(layout, b).size.width, 400);
}

TEST(SplitLayoutTest, LetsADividerStandWhereItIsPutButLeavesEveryPaneALittleRoom) {
  SplitLayout layout(a);
  layout.split(a, Direction::Right, c);
  layout.split(a, Direction::Right, b);
  const auto divider = [&layout](std::size_t number) { return layout.places(kWhole).dividers[number]; };
  const int second = divider(1).rect.x;
  for (const int position : {120, 333, 217, 90}) {
    ASSERT_TRUE(layout.moveDivider(divider(0), position, kWhole));
    EXPECT_EQ(divider(0).rect.x, position);
    EXPECT_EQ(divider(1).rect.x, second) << "others stay";
  }
  EXPECT_TRUE(layout.moveDivider(divider(0), -50, kWhole));
  EXPECT_EQ(rectOf(layout, a).size.width, SplitLayout::smallestPane.width);
  EXPECT_FALSE(layout.moveDivider(divider(0), -60, kWhole)) << "it is there already";
  EXPECT_TRUE(layout.moveDivider(divider(0), 5000, kWhole));
  EXPECT_EQ(rectOf(layout, b).size.width, SplitLayout::smallestPane.width);
}

TEST(SplitLayoutTest, CountsThePanesWithinAPartWhenItIsMadeSmall) {
  // The part of a, c and d has a row of two panes.
  SplitLayout outer(a);
  outer.split(a, Direction::Right, b);
  outer.split(a, Direction::Down, c);
  outer.split(c, Direction::Right, d);
  const SplitLayout::Places places = outer.places(kWhole);
  const auto divider =
      std::ranges::find_if(places.dividers, [](const SplitLayout::Divider& each) { return each.path.empty(); });
  ASSERT_NE(divider, places.dividers.end());
  ASSERT_TRUE(outer.moveDivider(*divider, 0, kWhole));
  EXPECT_EQ(rectOf(outer, a).size.width, 2 * SplitLayout::smallestPane.width + SplitLayout::dividerBreadth);
}

TEST(SplitLayoutTest, KeepsSharesWhenTheWholeIsMadeSmallAndLargeAgain) {
  SplitLayout layout(a);
  layout.split(a, Direction::Right, b);
  ASSERT_TRUE(layout.moveEdge(a, Direction::Right, 137, kWhole));
  const PaneRect before = rectOf(layout, a);
  EXPECT_EQ(rectOf(layout, a, {.width = 3, .height = 2}).size.height, 2);
  EXPECT_EQ(rectOf(layout, a), before);
}

// The area is covered exactly once, whatever was done.
TEST(SplitLayoutTest, CoversTheAreaWithoutGapsAndOverlapsAfterAnything) {
  for (unsigned seed = 0; seed < 300; ++seed) {
    std::minstd_rand random(seed);
    const auto below = [&random](std::size_t limit) { return static_cast<std::size_t>(random() % limit); };
    SplitLayout layout(a);
    std::uint64_t next = 2;
    for (int step = 0; step < 30; ++step) {
      const std::vector<PaneId> panes = layout.panes();
      const PaneId pane = panes[below(panes.size())];
      const auto direction = static_cast<Direction>(below(4));
      const PaneSize size{.width = static_cast<int>(below(900)), .height = static_cast<int>(below(700))};
      switch (below(5)) {
        case 0:
        case 1:
          if (panes.size() < 12) layout.split(pane, direction, PaneId{next++});
          break;
        case 2:
          if (panes.size() > 1) layout.remove(pane);
          break;
        case 3:
          layout.moveEdge(pane, direction, static_cast<int>(below(200)), size);
          break;
        default:
          below(2) == 0 ? layout.equalise() : layout.swap(pane, panes.front());
      }
      const SplitLayout::Places places = layout.places(size);
      ASSERT_EQ(places.panes.size(), layout.panes().size());
      long area = 0;
      const auto add = [&](const PaneRect& rect) {
        ASSERT_GE(rect.size.width, 0);
        ASSERT_GE(rect.size.height, 0);
        ASSERT_LE(rect.x + rect.size.width, size.width);
        ASSERT_LE(rect.y + rect.size.height, size.height);
        area += static_cast<long>(rect.size.width) * rect.size.height;
      };
      for (const SplitLayout::Place& each : places.panes)
        add(each.rect);
      for (const SplitLayout::Divider& each : places.dividers)
        add(each.rect);
      ASSERT_EQ(area, static_cast<long>(size.width) * size.height) << "seed " << seed << ", step " << step;
    }
  }
}

}  // namespace
}  // namespace zolt
