// Clusters that are wider than their cells.
#include "canvas/GlyphMask.h"

#include <gtest/gtest.h>

#include <QFontMetricsF>
#include <cmath>

#include "canvas/CanvasFonts.h"

namespace zolt {
namespace {

class WideClusterTest : public testing::TestWithParam<int> {
 protected:
  // Letters over a room that is `columns` of the fixed font wide.
  GlyphMask shaped(const char* letters, double columns, ClusterShape shape = ClusterShape::Letters) const {
    return shapedCluster(QString::fromLatin1(letters), font,
                         {.width = DevicePixels(std::lround(columns * width)),
                          .height = DevicePixels(3 * GetParam()),
                          .baseline = DevicePixels(2 * GetParam())},
                         shape);
  }

  QFont font = CanvasFonts::systemFont(GetParam());
  double width = QFontMetricsF(font).horizontalAdvance(QLatin1Char('H'));
};

TEST_P(WideClusterTest, KeepsItsHeightWhereItNeedBeNarrowerByAQuarterOnly) {
  const GlyphMask natural = shaped("HH", 2);
  const GlyphMask narrow = shaped("HH", 1.5);
  EXPECT_NEAR(narrow.height, natural.height, 1);
  EXPECT_NEAR(narrow.top, natural.top, 1);
  EXPECT_LT(narrow.width, natural.width);
  EXPECT_LE(narrow.width, std::lround(1.5 * width) + 1);
}

TEST_P(WideClusterTest, ReachesALittleOverItsCellsBeforeItBecomesLow) {
  const GlyphMask natural = shaped("HH", 2);
  const GlyphMask half = shaped("HH", 1);
  EXPECT_GE(half.height, 0.75 * natural.height - 1);
  EXPECT_LE(half.width, 1.25 * width + 2);
  EXPECT_GT(half.width, 0.9 * width - 1);
  const double middle = half.left + half.width / 2.0;
  EXPECT_NEAR(middle, width / 2, 1.5) << "by as much on either side";
}

TEST_P(WideClusterTest, MakesAPictureSmallerAsAWhole) {
  const GlyphMask natural = shaped("HH", 2);
  const GlyphMask half = shaped("HH", 1, ClusterShape::Emoji);
  EXPECT_NEAR(half.height, natural.height / 2.0, 1.5);
  EXPECT_NEAR(half.width, natural.width / 2.0, 1.5);
}

INSTANTIATE_TEST_SUITE_P(Sizes, WideClusterTest, testing::Values(14, 28, 42));

}  // namespace
}  // namespace zolt
