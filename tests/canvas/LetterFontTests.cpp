#include "canvas/LetterFont.h"

#include <gtest/gtest.h>

#include "canvas/CanvasFonts.h"

namespace zolt {
namespace {

// One letter of each script that Qt draws only with shaping rules.
constexpr char32_t kLetters[] = {0x0710, 0x0780, 0x0915, 0x0995, 0x0A15, 0x0A95, 0x0B15,
                                 0x0B95, 0x0C15, 0x0C95, 0x0D15, 0x0D9A, 0x1780, 0x07CA};

std::string utf8(char32_t letter) {
  return QString::fromUcs4(&letter, 1).toStdString();
}

TEST(LetterFont, LeavesLettersOfOtherScriptsToQt) {
  for (const char32_t letter :
       {U'a', U'\u00E9', U'\u0416', U'\u05D0', U'\u0628', U'\u4E2D', U'\U0001F600', U'\uE000'}) {
    EXPECT_EQ(letterFont(letter, CanvasFonts::systemFont(14)).use, LetterFont::Use::Any) << std::uint32_t(letter);
  }
}

// Whichever fonts this system has; a warning of Qt would fail the test.
TEST(LetterFont, DrawsLettersOfScriptsWithRulesWithoutAWarning) {
  CanvasFonts fonts({}, 1);
  for (const char32_t letter : kLetters) {
    const GlyphMask& mask = *fonts.face(FontWeight::Regular, FontSlant::Upright).cluster(utf8(letter), 1);
    EXPECT_FALSE(mask.empty()) << std::uint32_t(letter);
    EXPECT_LE(mask.height, fonts.metrics().height.toInt() * 2);
  }
}

TEST(LetterFont, DrawsMarksOfScriptsWithRulesOnOtherCharactersWithoutAWarning) {
  CanvasFonts fonts({}, 1);
  auto& face = fonts.face(FontWeight::Regular, FontSlant::Upright);
  for (const char32_t base : {U'x', U'=', U'\u4E2D', U'\U0001F600'}) {
    for (const char32_t mark : {U'\u0711', U'\u07A6', U'\u07B0', U'\u07EB', U'\u093E', U'\u0941'}) {
      std::string cluster = utf8(base);
      cluster += utf8(mark);
      EXPECT_NE(face.cluster(cluster, 2), nullptr) << std::uint32_t(base) << ' ' << std::uint32_t(mark);
    }
  }
}

#ifndef Q_OS_MACOS
TEST(LetterFont, ShowsTheFontsOwnSignForALetterThatNoFontHas) {
  CanvasFonts fonts({}, 1);
  auto& face = fonts.face(FontWeight::Regular, FontSlant::Upright);
  const GlyphMask missing = GlyphMask::of(QRawFont::fromFont(CanvasFonts::fontFor({}, CanvasFont().size)), 0);
  for (const char32_t letter : kLetters) {
    if (letterFont(letter, CanvasFonts::systemFont(14)).use != LetterFont::Use::None) continue;
    EXPECT_EQ(face.cluster(utf8(letter), 1)->coverage, missing.coverage) << std::uint32_t(letter);
  }
}
#endif

TEST(LetterFont, DrawsAClusterGlyphByGlyphWithinItsCells) {
  const QRawFont font = QRawFont::fromFont(CanvasFonts::systemFont(20));
  const ClusterRoom room{.width = DevicePixels(6), .height = DevicePixels(24), .baseline = DevicePixels(18)};
  const GlyphMask letter = bareCluster(QStringLiteral("M"), font, room);
  EXPECT_FALSE(letter.empty());
  EXPECT_LE(letter.width, 8) << "smaller than the font has it";
  const GlyphMask both = bareCluster(QStringLiteral("M_"), font, room);
  EXPECT_GT(both.height, letter.height) << "on top of each other";
  EXPECT_LE(both.width, 8);
}

}  // namespace
}  // namespace zolt
