#include <gtest/gtest.h>

#include <QApplication>

#include "controls/ControlColors.h"
#include "support/Palettes.h"

namespace zolt {
namespace {

QPalette paletteOf(const QColor& window, const QColor& base, const QColor& text, const QColor& highlight) {
  QPalette palette(window);
  palette.setColor(QPalette::Window, window);
  palette.setColor(QPalette::Base, base);
  palette.setColor(QPalette::WindowText, text);
  palette.setColor(QPalette::PlaceholderText, QColor(text.red(), text.green(), text.blue(), 128));
  palette.setColor(QPalette::Highlight, highlight);
  return palette;
}

std::vector<QPalette> palettes() {
  return {QPalette(QColor(0xEF, 0xEF, 0xEF)),
          QApplication::palette(),
          test::darkPalette(),
          paletteOf(Qt::white, Qt::white, Qt::black, QColor(0, 0x7A, 0xFF)),
          paletteOf(Qt::black, Qt::black, Qt::white, Qt::yellow),
          paletteOf(QColor(0xF6, 0xF5, 0xF4), Qt::white, QColor(0x2E, 0x34, 0x36), QColor(0x35, 0x84, 0xE4)),
          paletteOf(QColor(0x24, 0x24, 0x24), QColor(0x30, 0x30, 0x30), Qt::white, QColor(0xE9, 0x54, 0x20))};
}

TEST(ControlColors, ComputeContrastsAsTheStandardDoes) {
  EXPECT_NEAR(contrastRatio(Qt::black, Qt::white), 21, 0.01);
  EXPECT_NEAR(contrastRatio(Qt::white, Qt::white), 1, 0.001);
  EXPECT_NEAR(contrastRatio(QColor(0x76, 0x76, 0x76), Qt::white), 4.54, 0.01);
  EXPECT_EQ(contrastRatio(Qt::red, Qt::blue), contrastRatio(Qt::blue, Qt::red));
}

TEST(ControlColors, AreReadableOnLightAndDarkPalettesAlike) {
  for (const QPalette& palette : palettes()) {
    const ControlColors colors(palette);
    const std::string name = palette.color(QPalette::Window).name().toStdString();
    const QColor faint = mixed(colors.card, colors.secondary, 0.1);
    for (const QColor& background : {colors.window, colors.card, faint}) {
      EXPECT_GE(contrastRatio(colors.secondary, background), 4.5) << name;
    }
    for (const QColor& background : {colors.card, colors.field, colors.raised, mixed(colors.card, colors.text, 0.1)}) {
      EXPECT_GE(contrastRatio(colors.text, background), 4.5) << name;
    }
    EXPECT_GE(contrastRatio(colors.accentText, mixed(colors.window, colors.accent, 0.16)), 4.5) << name;
    EXPECT_GE(contrastRatio(colors.destructive, colors.field), 4.5) << name;
    EXPECT_GT(contrastRatio(colors.card, colors.window), 1.02) << name;
  }
}

TEST(ControlColors, PutTheSecondaryColourBetweenTheTextAndItsBackground) {
  for (const QPalette& palette : palettes()) {
    const ControlColors colors(palette);
    EXPECT_LT(contrastRatio(colors.secondary, colors.card), contrastRatio(colors.text, colors.card));
  }
}

TEST(ControlColors, KeepDestructiveButtonsRed) {
  for (const QPalette& palette : palettes()) {
    const QColor red = ControlColors(palette).destructive;
    EXPECT_GT(red.red(), 150);
    EXPECT_GT(red.red(), red.green() + 60);
    EXPECT_GT(red.red(), red.blue() + 60);
  }
}

TEST(ControlColors, DrawBordersAndTracksThatStandOutOnAPaletteOfHighContrast) {
  const ControlColors colors(paletteOf(Qt::black, Qt::black, Qt::white, Qt::yellow));
  EXPECT_GE(contrastRatio(colors.fieldBorder, colors.card), 4.5);
  EXPECT_GE(contrastRatio(colors.hairline, colors.card), 3);
  EXPECT_GE(contrastRatio(colors.off, colors.card), 3);
}

TEST(ControlColors, BlendAColourOnlyAsFarAsNeeded) {
  EXPECT_EQ(readable(Qt::darkBlue, {Qt::white}, Qt::black), QColor(Qt::darkBlue));
  const QColor moved = readable(QColor(0xAA, 0xAA, 0xAA), {Qt::white}, Qt::black);
  EXPECT_GE(contrastRatio(moved, Qt::white), 4.5);
  EXPECT_LT(contrastRatio(moved, Qt::white), 6);
  EXPECT_EQ(readable(Qt::gray, {Qt::black, Qt::white}, Qt::green), QColor(Qt::green));
}

}  // namespace
}  // namespace zolt
