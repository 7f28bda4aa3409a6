// Compiled once per vector instruction set by Highway; the best one is chosen at run time.
#undef HWY_TARGET_INCLUDE
#define HWY_TARGET_INCLUDE "text/TextScan.cpp"
#include <hwy/foreach_target.h>
// foreach_target.h must come first.
#include <hwy/highway.h>

#include "text/GraphemeClusters.h"
#include "text/TextScan.h"
#include "text/Utf8.h"

HWY_BEFORE_NAMESPACE();
namespace zolt::HWY_NAMESPACE {
namespace hn = hwy::HWY_NAMESPACE;

// What ends a prefix, for vectors and for one byte. Vectors compare bytes as signed numbers: non-ASCII is negative.
struct NotPlain {
  template <class D, class V>
  HWY_INLINE auto operator()(D d, V v) const {
    const hn::RebindToSigned<D> asSigned;
    const auto kept = hn::Or(hn::Eq(v, hn::Set(d, '\n')), hn::Eq(v, hn::Set(d, '\t')));
    const auto low = hn::RebindMask(d, hn::Lt(hn::BitCast(asSigned, v), hn::Set(asSigned, 0x20)));
    return hn::AndNot(kept, low);
  }
  HWY_INLINE bool operator()(unsigned char c) const { return c >= 0x80 || (c < 0x20 && c != '\n' && c != '\t'); }
};

struct Control {
  template <class D, class V>
  HWY_INLINE auto operator()(D d, V v) const {
    return hn::Eq(hn::Min(v, hn::Set(d, 0x1F)), v);
  }
  HWY_INLINE bool operator()(unsigned char c) const { return c < 0x20; }
};

struct NotPrintable {
  template <class D, class V>
  HWY_INLINE auto operator()(D d, V v) const {
    const hn::RebindToSigned<D> asSigned;
    const auto low = hn::RebindMask(d, hn::Lt(hn::BitCast(asSigned, v), hn::Set(asSigned, 0x20)));
    return hn::Or(low, hn::Eq(v, hn::Set(d, 0x7F)));
  }
  HWY_INLINE bool operator()(unsigned char c) const { return c < 0x20 || c >= 0x7F; }
};

struct Ascii {
  template <class D, class V>
  HWY_INLINE auto operator()(D d, V v) const {
    return hn::Eq(hn::Min(v, hn::Set(d, 0x7F)), v);
  }
  HWY_INLINE bool operator()(unsigned char c) const { return c < 0x80; }
};

template <class Stop>
HWY_INLINE std::size_t prefixUntil(const std::uint8_t* text, std::size_t size, Stop stop) {
  std::size_t i = 0;
  // Most runs between two escapes are short: one narrow vector first, the wide ones after it.
  const hn::CappedTag<std::uint8_t, 16> narrow;
  if (size >= hn::Lanes(narrow)) {
    const auto found = hn::FindFirstTrue(narrow, stop(narrow, hn::LoadU(narrow, text)));
    if (found >= 0) return static_cast<std::size_t>(found);
    i = hn::Lanes(narrow);
  }
  const hn::ScalableTag<std::uint8_t> wide;
  const std::size_t lanes = hn::Lanes(wide);
  for (; i + lanes <= size; i += lanes) {
    const auto found = hn::FindFirstTrue(wide, stop(wide, hn::LoadU(wide, text + i)));
    if (found >= 0) return i + static_cast<std::size_t>(found);
  }
  for (; i < size && !stop(text[i]); ++i) {
  }
  return i;
}

std::size_t PlainPrefix(const std::uint8_t* text, std::size_t size) {
  return prefixUntil(text, size, NotPlain{});
}
std::size_t ControlFreePrefix(const std::uint8_t* text, std::size_t size) {
  return prefixUntil(text, size, Control{});
}
std::size_t PrintablePrefix(const std::uint8_t* text, std::size_t size) {
  return prefixUntil(text, size, NotPrintable{});
}
std::size_t NonAsciiPrefix(const std::uint8_t* text, std::size_t size) {
  return prefixUntil(text, size, Ascii{});
}

#if HWY_TARGET == HWY_SCALAR

bool IsValidUtf8(const std::uint8_t* text, std::size_t size) {
  const char* at = reinterpret_cast<const char*>(text);
  for (const char* const end = at + size; at != end;) {
    const std::size_t length = decodeUtf8(at, end).length;
    if (length == 0) return false;
    at += length;
  }
  return true;
}

#else

// The look-up method of Keiser and Lemire, "Validating UTF-8 In Less Than One Instruction Per Byte" (2021): three
// tables, indexed by the nibbles of a byte and of the one before it, name the errors that the pair could be part of; an
// error stands where all three agree.
using Block = hn::FixedTag<std::uint8_t, 16>;
using Vector = hn::Vec<Block>;

enum Error : std::uint8_t {
  kTooShort = 1 << 0,      // a lead byte without its continuation
  kTooLong = 1 << 1,       // ASCII followed by a continuation
  kOverlong3 = 1 << 2,     // E0 80..9F
  kTooLarge = 1 << 3,      // F4 90.. and above
  kSurrogate = 1 << 4,     // ED A0..BF
  kOverlong2 = 1 << 5,     // C0, C1
  kTooLarge1000 = 1 << 6,  // F5..FF 80..8F
  kOverlong4 = 1 << 6,     // F0 80..8F: shares its bit with the one above
  kTwoConts = 1 << 7,      // two continuations in a row: right only as the third or fourth byte
  kCarry = kTooShort | kTooLong | kTwoConts,
};

alignas(16) constexpr std::uint8_t kByte1High[16] = {
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,
    kTooLong,  // 0_: ASCII
    kTwoConts,
    kTwoConts,
    kTwoConts,
    kTwoConts,  // 10: continuation
    kTooShort | kOverlong2,
    kTooShort,                                           // 1100, 1101
    kTooShort | kOverlong3 | kSurrogate,                 // 1110
    kTooShort | kTooLarge | kTooLarge1000 | kOverlong4,  // 1111
};
alignas(16) constexpr std::uint8_t kByte1Low[16] = {
    kCarry | kOverlong3 | kOverlong2 | kOverlong4,  // _0
    kCarry | kOverlong2,                            // _1
    kCarry,
    kCarry,              // _2, _3
    kCarry | kTooLarge,  // _4
    kCarry | kTooLarge | kTooLarge1000,
    kCarry | kTooLarge | kTooLarge1000,
    kCarry | kTooLarge | kTooLarge1000,
    kCarry | kTooLarge | kTooLarge1000,
    kCarry | kTooLarge | kTooLarge1000,
    kCarry | kTooLarge | kTooLarge1000,
    kCarry | kTooLarge | kTooLarge1000,
    kCarry | kTooLarge | kTooLarge1000,
    kCarry | kTooLarge | kTooLarge1000 | kSurrogate,  // _D
    kCarry | kTooLarge | kTooLarge1000,
    kCarry | kTooLarge | kTooLarge1000,
};
alignas(16) constexpr std::uint8_t kByte2High[16] = {
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,                                                                    // ASCII
    kTooLong | kOverlong2 | kTwoConts | kOverlong3 | kTooLarge1000 | kOverlong4,  // 1000
    kTooLong | kOverlong2 | kTwoConts | kOverlong3 | kTooLarge,                   // 1001
    kTooLong | kOverlong2 | kTwoConts | kSurrogate | kTooLarge,                   // 1010
    kTooLong | kOverlong2 | kTwoConts | kSurrogate | kTooLarge,                   // 1011
    kTooShort,
    kTooShort,
    kTooShort,
    kTooShort,  // lead bytes
};

HWY_INLINE Vector errorsIn(Block d, Vector input, Vector previous) {
  const Vector prev1 = hn::CombineShiftRightBytes<15>(d, input, previous);
  const Vector byte1High = hn::TableLookupBytes(hn::LoadU(d, kByte1High), hn::ShiftRight<4>(prev1));
  const Vector byte1Low = hn::TableLookupBytes(hn::LoadU(d, kByte1Low), hn::And(prev1, hn::Set(d, 0x0F)));
  const Vector byte2High = hn::TableLookupBytes(hn::LoadU(d, kByte2High), hn::ShiftRight<4>(input));
  const Vector special = hn::And(hn::And(byte1High, byte1Low), byte2High);
  // A third byte must follow E0 or more two bytes before, a fourth F0 or more three before.
  const Vector prev2 = hn::CombineShiftRightBytes<14>(d, input, previous);
  const Vector prev3 = hn::CombineShiftRightBytes<13>(d, input, previous);
  const Vector third = hn::SaturatedSub(prev2, hn::Set(d, 0xE0 - 0x80));
  const Vector fourth = hn::SaturatedSub(prev3, hn::Set(d, 0xF0 - 0x80));
  const Vector mustContinue = hn::And(hn::Or(third, fourth), hn::Set(d, 0x80));
  return hn::Xor(mustContinue, special);
}

// Not zero where a sequence that starts in the last three bytes reaches past the block.
HWY_INLINE Vector unfinishedIn(Block d, Vector input) {
  alignas(16) static constexpr std::uint8_t kLimits[16] = {255, 255, 255, 255, 255, 255,  255,  255,
                                                           255, 255, 255, 255, 255, 0xEF, 0xDF, 0xBF};
  return hn::SaturatedSub(input, hn::LoadU(d, kLimits));
}

bool IsValidUtf8(const std::uint8_t* text, std::size_t size) {
  const Block d;
  const hn::ScalableTag<std::uint8_t> wide;
  const std::size_t lanes = hn::Lanes(wide);
  Vector error = hn::Zero(d);
  Vector previous = hn::Zero(d);
  Vector unfinished = hn::Zero(d);
  std::size_t i = 0;
  while (i + 16 <= size) {
    if (i + 4 * lanes <= size) {
      const auto some = hn::Or(hn::Or(hn::LoadU(wide, text + i), hn::LoadU(wide, text + i + lanes)),
                               hn::Or(hn::LoadU(wide, text + i + 2 * lanes), hn::LoadU(wide, text + i + 3 * lanes)));
      if (hn::AllTrue(wide, Ascii{}(wide, some))) {
        error = hn::Or(error, unfinished);
        unfinished = hn::Zero(d);
        previous = hn::Zero(d);
        i += 4 * lanes;
        continue;
      }
    }
    const Vector input = hn::LoadU(d, text + i);
    error = hn::Or(error, errorsIn(d, input, previous));
    unfinished = unfinishedIn(d, input);
    previous = input;
    i += 16;
  }
  alignas(16) std::uint8_t rest[16] = {};
  for (std::size_t k = 0; i + k < size; ++k) {
    rest[k] = text[i + k];
  }
  // The padding is ASCII, so that a sequence truncated by the end of the text is an error too.
  error = hn::Or(error, errorsIn(d, hn::LoadU(d, rest), previous));
  error = hn::Or(error, unfinishedIn(d, hn::LoadU(d, rest)));
  return hn::AllTrue(d, hn::Eq(error, hn::Zero(d)));
}

#endif

}  // namespace zolt::HWY_NAMESPACE
HWY_AFTER_NAMESPACE();

#if HWY_ONCE
namespace zolt {

HWY_EXPORT(PlainPrefix);
HWY_EXPORT(ControlFreePrefix);
HWY_EXPORT(PrintablePrefix);
HWY_EXPORT(NonAsciiPrefix);
HWY_EXPORT(IsValidUtf8);

namespace {

const std::uint8_t* bytesOf(std::string_view text) {
  return reinterpret_cast<const std::uint8_t*>(text.data());
}

}  // namespace

std::size_t longPlainPrefix(std::string_view text) {
  return HWY_DYNAMIC_DISPATCH(PlainPrefix)(bytesOf(text), text.size());
}

std::size_t controlFreePrefix(std::string_view text) {
  return HWY_DYNAMIC_DISPATCH(ControlFreePrefix)(bytesOf(text), text.size());
}

std::size_t longPrintablePrefix(std::string_view text) {
  return HWY_DYNAMIC_DISPATCH(PrintablePrefix)(bytesOf(text), text.size());
}

std::size_t longNonAsciiPrefix(std::string_view text) {
  return HWY_DYNAMIC_DISPATCH(NonAsciiPrefix)(bytesOf(text), text.size());
}

bool isValidUtf8(std::string_view text) {
  return HWY_DYNAMIC_DISPATCH(IsValidUtf8)(bytesOf(text), text.size());
}

}  // namespace zolt
#endif
