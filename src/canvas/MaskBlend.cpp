// Highway compiles this file once for each vector instruction set and picks the best one at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "canvas/MaskBlend.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h must come first.
#include <hwy/highway.h>

#include "canvas/MaskBlend.h"

HWY_BEFORE_NAMESPACE();
namespace zolt::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// As many components as a vector holds in 16 bits each, in whole pixels, and no more than the unit of a row.
using Wide = hn::CappedTag<std::uint16_t, 4 * kMaskRowUnit>;
using Narrow = hn::Rebind<std::uint8_t, Wide>;

// value / 255, rounded, for values up to 255 * 255.
HWY_INLINE hn::Vec<Wide> By255(hn::Vec<Wide> value) {
  const auto rounded = hn::Add(value, hn::Set(Wide(), 128));
  return hn::ShiftRight<8>(hn::Add(rounded, hn::ShiftRight<8>(rounded)));
}

HWY_INLINE hn::Vec<Wide> Load(const QRgb* pixels) {
  return hn::PromoteTo(Wide(), hn::LoadU(Narrow(), reinterpret_cast<const std::uint8_t*>(pixels)));
}

void BlendMask(QRgb* pixels, std::ptrdiff_t pitch, const QRgb* coverage, int width, int height, QRgb color) {
  const Wide wide;
  const Narrow narrow;
  const hn::Repartition<std::uint32_t, Wide> pairs;
  const auto whole = hn::Set(wide, 255);
  const std::uint32_t alpha = qAlpha(color);
  const auto alphas = hn::Set(wide, static_cast<std::uint16_t>(alpha));
  // The colour, opaque, component by component.
  const std::uint32_t low = (color & 0xFF) | (color >> 8 & 0xFF) << 16;
  const std::uint32_t high = (color >> 16 & 0xFF) | 0xFFU << 16;
  const auto colors = hn::BitCast(wide, hn::OddEven(hn::Set(pairs, high), hn::Set(pairs, low)));
  const int step = static_cast<int>(hn::Lanes(wide)) / 4;
  for (int y = 0; y < height; ++y, pixels += pitch, coverage += width) {
    for (int x = 0; x < width; x += step) {
      auto share = Load(coverage + x);
      if (alpha != 255) share = By255(hn::Mul(share, alphas));
      const auto rest = hn::Mul(Load(pixels + x), hn::Sub(whole, share));
      const auto sum = By255(hn::Add(hn::Mul(colors, share), rest));
      hn::StoreU(hn::DemoteTo(narrow, hn::BitCast(hn::RebindToSigned<Wide>(), sum)), narrow,
                 reinterpret_cast<std::uint8_t*>(pixels + x));
    }
  }
}

}  // namespace zolt::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zolt {

HWY_EXPORT(BlendMask);

void blendMask(QRgb* pixels, std::ptrdiff_t pitch, const QRgb* coverage, int width, int height, QRgb color) {
  HWY_DYNAMIC_DISPATCH(BlendMask)(pixels, pitch, coverage, width, height, color);
}

}  // namespace zolt
#endif
