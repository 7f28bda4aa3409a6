#include "canvas/MaskBlend.h"

#include <gtest/gtest.h>

#include <random>
#include <vector>

namespace zolt {
namespace {

// (a * share + b * (255 - share)) / 255, rounded.
int between(int a, int b, int share) {
  return (a * share + b * (255 - share) + 127) / 255;
}

int component(QRgb pixel, int number) {
  return static_cast<int>(pixel >> (8 * number) & 0xFF);
}

class MaskBlendTest : public testing::TestWithParam<int> {
 protected:
  std::vector<QRgb> randomPixels(int count) {
    std::vector<QRgb> pixels(static_cast<std::size_t>(count));
    for (QRgb& pixel : pixels) {
      pixel = static_cast<QRgb>(random());
    }
    return pixels;
  }

  static constexpr int kHeight = 5;
  static constexpr int kPitch = 3 * kMaskRowUnit + 3;
  const int width = GetParam();
  std::mt19937 random{3};
};

TEST_P(MaskBlendTest, MixesEachComponentInTheShareOfItsCoverage) {
  for (int round = 0; round < 200; ++round) {
    const std::vector<QRgb> before = randomPixels(kHeight * kPitch);
    const std::vector<QRgb> coverage = randomPixels(kHeight * width);
    const QRgb color = 0xFF000000 | static_cast<QRgb>(random());
    std::vector<QRgb> pixels = before;
    blendMask(pixels.data(), kPitch, coverage.data(), width, kHeight, color);
    for (int y = 0; y < kHeight; ++y) {
      for (int x = 0; x < kPitch; ++x) {
        const auto at = static_cast<std::size_t>(y * kPitch + x);
        if (x >= width) {
          ASSERT_EQ(pixels[at], before[at]) << "beside the mask";
          continue;
        }
        for (int number = 0; number < 4; ++number) {
          const int share = component(coverage[static_cast<std::size_t>(y * width + x)], number);
          ASSERT_EQ(component(pixels[at], number),
                    between(component(color, number), component(before[at], number), share))
              << x << ' ' << y << " component " << number;
        }
      }
    }
  }
}

TEST_P(MaskBlendTest, LeavesMoreOfWhatWasThereWhereTheColourIsTranslucent) {
  const std::vector<QRgb> before = randomPixels(kHeight * kPitch);
  const std::vector<QRgb> coverage = randomPixels(kHeight * width);
  constexpr int kAlpha = 100;
  const QRgb color = qRgba(200, 90, 13, kAlpha);
  std::vector<QRgb> pixels = before;
  blendMask(pixels.data(), kPitch, coverage.data(), width, kHeight, color);
  for (int y = 0; y < kHeight; ++y) {
    for (int x = 0; x < width; ++x) {
      const auto at = static_cast<std::size_t>(y * kPitch + x);
      for (int number = 0; number < 4; ++number) {
        const int share = between(component(coverage[static_cast<std::size_t>(y * width + x)], number), 0, kAlpha);
        const int wanted = number == 3 ? 255 : component(color, number);
        ASSERT_EQ(component(pixels[at], number), between(wanted, component(before[at], number), share));
      }
    }
  }
}

TEST_P(MaskBlendTest, LeavesPixelsThatAreNotCoveredAsTheyAre) {
  const std::vector<QRgb> before = randomPixels(kHeight * kPitch);
  const std::vector<QRgb> coverage(static_cast<std::size_t>(kHeight * width));
  std::vector<QRgb> pixels = before;
  blendMask(pixels.data(), kPitch, coverage.data(), width, kHeight, qRgb(1, 2, 3));
  EXPECT_EQ(pixels, before);
}

INSTANTIATE_TEST_SUITE_P(Widths, MaskBlendTest, testing::Values(kMaskRowUnit, 2 * kMaskRowUnit, 3 * kMaskRowUnit));

}  // namespace
}  // namespace zolt
