// Highway compiles this file once for each vector instruction set and chooses the best one at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "find/PairScan.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h must come first.
#include <hwy/highway.h>

#include "find/PairScan.h"

HWY_BEFORE_NAMESPACE();
namespace zolt::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

std::size_t FirstPair(const std::uint8_t* text, std::size_t starts, const NeedlePair& pair) {
  const hn::ScalableTag<std::uint8_t> d;
  const std::size_t lanes = hn::Lanes(d);
  const std::uint8_t* const first = text + pair.first.offset;
  const std::uint8_t* const second = text + pair.second.offset;
  if (starts < lanes) {
    for (std::size_t i = 0; i < starts; ++i) {
      if ((first[i] | pair.first.fold) == pair.first.value && (second[i] | pair.second.fold) == pair.second.value) {
        return i;
      }
    }
    return starts;
  }
  const auto firstValue = hn::Set(d, pair.first.value);
  const auto firstFold = hn::Set(d, pair.first.fold);
  const auto secondValue = hn::Set(d, pair.second.value);
  const auto secondFold = hn::Set(d, pair.second.fold);
  const auto both = [&](std::size_t i) HWY_ATTR {
    return hn::And(hn::Eq(hn::Or(hn::LoadU(d, first + i), firstFold), firstValue),
                   hn::Eq(hn::Or(hn::LoadU(d, second + i), secondFold), secondValue));
  };
  std::size_t i = 0;
  for (; i + 2 * lanes <= starts; i += 2 * lanes) {
    const auto low = both(i);
    const auto high = both(i + lanes);
    if (hn::AllFalse(d, hn::Or(low, high))) continue;
    const auto found = hn::FindFirstTrue(d, low);
    if (found >= 0) return i + static_cast<std::size_t>(found);
    return i + lanes + static_cast<std::size_t>(hn::FindFirstTrue(d, high));
  }
  // The last vector may overlap the one before, where there was no match.
  while (i < starts) {
    i = i + lanes <= starts ? i : starts - lanes;
    const auto found = hn::FindFirstTrue(d, both(i));
    if (found >= 0) return i + static_cast<std::size_t>(found);
    i += lanes;
  }
  return starts;
}

}  // namespace zolt::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zolt {

HWY_EXPORT(FirstPair);

std::size_t firstPair(const char* text, std::size_t starts, const NeedlePair& pair) {
  return HWY_DYNAMIC_DISPATCH(FirstPair)(reinterpret_cast<const std::uint8_t*>(text), starts, pair);
}

}  // namespace zolt
#endif
