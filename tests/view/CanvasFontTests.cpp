// The canvas in the fixed-pitch fonts that people have: cells of other sizes, other ascents, other rounding.
#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QFile>
#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QProcess>
#include <QTemporaryDir>

#include "view/canvas/CanvasFonts.h"

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
    const CellMetrics cell = CanvasFonts(14, scale).metrics();
    EXPECT_GT(cell.baseline, 0) << scale;
    EXPECT_LT(cell.baseline, cell.height) << scale;
    EXPECT_GT(cell.underlineTop, cell.strikethroughTop) << scale;
    EXPECT_LE(cell.underlineTop + cell.lineThickness, cell.height) << scale;
    EXPECT_GT(cell.strikethroughTop, 0) << scale;
  }
}

class CanvasFontFamilyTest : public testing::TestWithParam<const char*> {};

// The system's fixed font is chosen once for a process: the canvas's tests run again in one of their own.
TEST_P(CanvasFontFamilyTest, SuitsTheCanvas) {
  const QString family = QString::fromLatin1(GetParam());
  if (!QFontDatabase::families().contains(family)) GTEST_SKIP() << GetParam() << " is not installed";
  QTemporaryDir folder;
  const QString configuration = folder.filePath(QStringLiteral("fonts.conf"));
  QFile file(configuration);
  ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  const QString before = qEnvironmentVariable("FONTCONFIG_FILE", QStringLiteral("/etc/fonts/fonts.conf"));
  file.write(
      QStringLiteral("<?xml version=\"1.0\"?>\n<!DOCTYPE fontconfig SYSTEM \"fonts.dtd\">\n<fontconfig>\n"
                     "<match target=\"pattern\"><test name=\"family\"><string>monospace</string></test>\n"
                     "<edit name=\"family\" mode=\"assign\" binding=\"strong\"><string>%1</string></edit></match>\n"
                     "<include>%2</include>\n</fontconfig>\n")
          .arg(family, before)
          .toUtf8());
  file.close();

  QProcess tests;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert(QStringLiteral("FONTCONFIG_FILE"), configuration);
  environment.insert(QString::fromLatin1(kWantedFamily), family);
  tests.setProcessEnvironment(environment);
  tests.setProcessChannelMode(QProcess::MergedChannels);
  tests.start(QCoreApplication::applicationFilePath(),
              {QStringLiteral("--gtest_filter=CanvasFonts.*:TextCanvasTest.*:TextCanvasSizeTest.*:SelectionTest.*:"
                              "AccessibilityTest.*:FinderTest.Marks*:FinderTest.GoesOut*:FinderTest.Fits*")});
  ASSERT_TRUE(tests.waitForFinished(300'000));
  EXPECT_EQ(tests.exitCode(), 0) << tests.readAll().toStdString();
}

INSTANTIATE_TEST_SUITE_P(Families, CanvasFontFamilyTest,
                         testing::Values("DejaVu Sans Mono", "Liberation Mono", "Noto Sans Mono"));

}  // namespace
}  // namespace zolt
