// The canvas in the fixed-pitch fonts that people have: cells of other sizes, other ascents, other rounding.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QProcess>

#include "canvas/CanvasFonts.h"
#include "canvas/CanvasLiterals.h"

namespace zolt {
namespace {

constexpr char kWantedFamily[] = "ZOLT_TEST_FONT_FAMILY";

TEST(CanvasFonts, AreFixedPitchAndOfTheFamilyThatTheSystemIsSetTo) {
  const QFont font = CanvasFonts::systemFont(14);
  const QFontMetricsF metrics(font);
  EXPECT_EQ(metrics.horizontalAdvance(QLatin1Char('i')), metrics.horizontalAdvance(QLatin1Char('M')));
  if (const QString wanted = qEnvironmentVariable(kWantedFamily); !wanted.isEmpty()) {
    EXPECT_EQ(QFontInfo(font).family(), wanted);
  }
}

TEST(CanvasFonts, PutTheirLinesInsideTheCell) {
  for (const double scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
    const CellMetrics cell = CanvasFonts({.size = 14}, scale).metrics();
    EXPECT_GT(cell.baseline, 0_px) << scale;
    EXPECT_LT(cell.baseline, cell.height) << scale;
    EXPECT_GT(cell.underlineTop, cell.strikethroughTop) << scale;
    EXPECT_LE(cell.underlineTop + cell.lineThickness, cell.height) << scale;
    EXPECT_GT(cell.strikethroughTop, 0_px) << scale;
  }
}

class CanvasFontFamilyTest : public testing::TestWithParam<const char*> {};

// The system's fixed font is chosen once for a process: the canvas's tests run again in one of their own.
TEST_P(CanvasFontFamilyTest, SuitsTheCanvas) {
  const QString family = QString::fromLatin1(GetParam());
  QProcess tests;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("ZOLT_TEST_FONT"), family);
  environment.insert(QString::fromLatin1(kWantedFamily), family);
  tests.setProcessEnvironment(environment);
  tests.setProcessChannelMode(QProcess::MergedChannels);
  tests.start(QCoreApplication::applicationFilePath(),
              {QStringLiteral("--gtest_filter=CanvasFonts.*:TextCanvasTest.*:TextCanvasSizeTest.*:SelectionTest.*:"
                              "AccessibilityTest.*:FinderTest.Marks*:FinderTest.GoesOut*:FinderTest.Fits*")});
  ASSERT_TRUE(tests.waitForFinished(300'000));
  const QByteArray output = tests.readAll();
  if (output.contains("which is not installed")) GTEST_SKIP() << GetParam() << " is not installed";
  EXPECT_EQ(tests.exitCode(), 0) << output.toStdString();
  EXPECT_TRUE(output.contains("suites ran")) << output.toStdString();
}

INSTANTIATE_TEST_SUITE_P(Families, CanvasFontFamilyTest,
                         testing::Values("DejaVu Sans Mono", "Liberation Mono", "Noto Sans Mono"));

}  // namespace
}  // namespace zolt
