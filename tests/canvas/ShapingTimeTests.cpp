// What becomes of new clusters when there is no more time to shape them.
#include "canvas/ShapingTime.h"

#include <gtest/gtest.h>

#include <string>

#include "canvas/CanvasLiterals.h"
#include "canvas/MaskCache.h"
#include "canvas/RowPainter.h"
#include "support/ManualClock.h"

namespace zolt {
namespace {

using namespace std::chrono_literals;

TEST(ShapingTime, IsWithoutALimitAtFirst) {
  test::ManualClock clock;
  ShapingTime time;
  time.spend([&] {
    clock.advance(1h);
    return 0;
  });
  EXPECT_FALSE(time.isOver());
}

TEST(ShapingTime, IsSpentByShapingOnly) {
  test::ManualClock clock;
  ShapingTime time;
  time.limit(clock, 5ms);
  clock.advance(1h);
  EXPECT_FALSE(time.isOver());
  const auto spend = [&](std::chrono::microseconds duration) {
    return time.spend([&] {
      clock.advance(duration);
      return 7;
    });
  };
  EXPECT_EQ(spend(4ms), 7);
  EXPECT_FALSE(time.isOver());
  spend(1ms);
  EXPECT_TRUE(time.isOver());
  time.limit(clock, 5ms);
  EXPECT_FALSE(time.isOver()) << "a new frame";
  spend(1h);
  EXPECT_TRUE(time.isOver());
  time.unlimit();
  EXPECT_FALSE(time.isOver());
}

GlyphMask markedBy(int left) {
  GlyphMask mask;
  mask.left = left;
  return mask;
}

TEST(MaskCache, KeepsWhatIsUsedAmongAnyNumberOfOthers) {
  MaskCache masks;
  masks.add("kept", markedBy(1));
  masks.add("forgotten", markedBy(2));
  for (std::size_t i = 0; i < 3 * MaskCache::kGeneration; ++i) {
    masks.add(std::to_string(i), {});
    if (i % 100 == 0) {
      ASSERT_NE(masks.find("kept"), nullptr) << i;
    }
  }
  EXPECT_EQ(masks.find("kept")->left, 1);
  EXPECT_EQ(masks.find("forgotten"), nullptr);
  EXPECT_EQ(masks.find("0"), nullptr);
  EXPECT_NE(masks.find(std::to_string(3 * MaskCache::kGeneration - 1)), nullptr);
}

class UnfinishedRowTest : public testing::Test {
 protected:
  QImage picture(const RowContent& content) {
    rows.paint(content, {});
    QImage image((cell.width * 10).toInt(), cell.height.toInt(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    rows.draw(painter, {});
    return image;
  }
  void limit(std::chrono::microseconds limit) { fonts.shapingTime().limit(clock, limit); }
  static bool isBlank(const QImage& image) {
    QImage blank(image.size(), image.format());
    blank.fill(Qt::black);
    return image == blank;
  }

  test::ManualClock clock;
  CanvasFonts fonts{CanvasFont{.ligatures = true}, 1};
  const CellMetrics& cell = fonts.metrics();
  RowPainter rows{fonts, CanvasColors()};
};

TEST_F(UnfinishedRowTest, LeavesANewClusterBlankUntilThereIsTime) {
  RowContent content;
  content.addCluster({.begin = 0_col, .end = 1_col}, "\u00E9", {});
  content.end = 1_col;
  limit(0ms);
  EXPECT_TRUE(isBlank(picture(content)));
  EXPECT_TRUE(rows.isUnfinished());
  limit(1ms);
  const QImage whole = picture(content);
  EXPECT_FALSE(isBlank(whole));
  EXPECT_FALSE(rows.isUnfinished());
  limit(0ms);
  EXPECT_EQ(picture(content), whole) << "a known one needs no time";
  EXPECT_FALSE(rows.isUnfinished());
}

TEST_F(UnfinishedRowTest, ShowsLettersWhereALigatureMayFollow) {
  RowContent content;
  content.addText(0_col, "->", {});
  content.end = 2_col;
  limit(0ms);
  EXPECT_FALSE(isBlank(picture(content)));
  EXPECT_TRUE(rows.isUnfinished());
  fonts.shapingTime().unlimit();
  picture(content);
  EXPECT_FALSE(rows.isUnfinished());
}

TEST_F(UnfinishedRowTest, IsFinishedWithASecondRowThatIs) {
  RowContent content;
  content.addCluster({.begin = 0_col, .end = 1_col}, "\u00E8", {});
  content.end = 1_col;
  limit(0ms);
  picture(content);
  ASSERT_TRUE(rows.isUnfinished());
  picture(RowContent());
  EXPECT_FALSE(rows.isUnfinished());
}

}  // namespace
}  // namespace zolt
