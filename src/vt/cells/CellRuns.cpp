// Highway compiles this file once for each vector instruction set and picks the best one at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "vt/cells/CellRuns.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h must come first.
#include <hwy/highway.h>

#include "vt/cells/CellRuns.h"

HWY_BEFORE_NAMESPACE();
namespace zolt::vt::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

void SpreadAscii(const std::uint8_t* text, std::size_t size, std::uint64_t attributes, std::uint64_t* cells) {
  const hn::ScalableTag<std::uint64_t> d64;
  const hn::Rebind<std::uint32_t, decltype(d64)> d32;
  const hn::Rebind<std::uint8_t, decltype(d64)> d8;
  const std::size_t lanes = hn::Lanes(d64);
  const auto attributesInLanes = hn::Set(d64, attributes);
  std::size_t i = 0;
  for (; i + lanes <= size; i += lanes) {
    const auto characters = hn::PromoteTo(d64, hn::PromoteTo(d32, hn::LoadU(d8, text + i)));
    hn::StoreU(hn::Or(characters, attributesInLanes), d64, cells + i);
  }
  for (; i < size; ++i) {
    cells[i] = attributes | text[i];
  }
}

std::size_t GatherAscii(const std::uint64_t* cells, std::size_t count, std::uint64_t attributes, std::uint8_t* text) {
  const hn::ScalableTag<std::uint64_t> d64;
  const hn::Rebind<std::uint8_t, decltype(d64)> d8;
  const std::size_t lanes = hn::Lanes(d64);
  const auto attributesInLanes = hn::Set(d64, attributes);
  const auto zero = hn::Zero(d64);
  const auto others = hn::Set(d64, ~std::uint64_t{0x7F});
  std::size_t i = 0;
  for (; i + lanes <= count; i += lanes) {
    const auto characters = hn::Xor(hn::LoadU(d64, cells + i), attributesInLanes);
    const auto isForeign = hn::Ne(hn::And(characters, others), zero);
    // Bytes after the first cell that does not match are overwritten later, or never read.
    hn::StoreU(hn::TruncateTo(d8, characters), d8, text + i);
    const auto found = hn::FindFirstTrue(d64, hn::Or(isForeign, hn::Eq(characters, zero)));
    if (found >= 0) return i + static_cast<std::size_t>(found);
  }
  for (; i < count; ++i) {
    const std::uint64_t character = cells[i] ^ attributes;
    if (character - 1 >= 0x7F) break;
    text[i] = static_cast<std::uint8_t>(character);
  }
  return i;
}

}  // namespace zolt::vt::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zolt::vt::detail {

HWY_EXPORT(SpreadAscii);
HWY_EXPORT(GatherAscii);

// Vectors load and store cells as 64-bit integers.
static_assert(sizeof(Cell) == sizeof(std::uint64_t) && alignof(Cell) == alignof(std::uint64_t));

void spreadLongAscii(std::string_view text, std::uint64_t attributes, Cell* cells) {
  HWY_DYNAMIC_DISPATCH(SpreadAscii)
  (reinterpret_cast<const std::uint8_t*>(text.data()), text.size(), attributes,
   reinterpret_cast<std::uint64_t*>(cells));
}

std::size_t gatherLongAscii(const Cell* cells, std::size_t count, std::uint64_t attributes, char* text) {
  return HWY_DYNAMIC_DISPATCH(GatherAscii)(reinterpret_cast<const std::uint64_t*>(cells), count, attributes,
                                           reinterpret_cast<std::uint8_t*>(text));
}

}  // namespace zolt::vt::detail
#endif
