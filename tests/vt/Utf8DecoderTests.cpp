#include "vt/Utf8Decoder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "text/GraphemeClusters.h"

namespace zolt::vt {
namespace {

std::u32string decoded(std::string_view bytes) {
  Utf8Decoder decoder;
  std::u32string text;
  for (const char byte : bytes) {
    Utf8Decoder::Outcome outcome = Utf8Decoder::Outcome::Refused;
    while (outcome == Utf8Decoder::Outcome::Refused) {
      outcome = decoder.take(static_cast<std::uint8_t>(byte));
      if (outcome != Utf8Decoder::Outcome::NeedsMore) text += decoder.scalar();
    }
  }
  return text;
}

TEST(Utf8Decoder, DecodesEveryScalar) {
  for (char32_t scalar = 0; scalar <= 0x10FFFF; ++scalar) {
    if (scalar == 0xD800) scalar = 0xE000;
    std::string bytes;
    const auto put = [&](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    const int length = scalar < 0x80 ? 1 : scalar < 0x800 ? 2 : scalar < 0x10000 ? 3 : 4;
    put(length == 1 ? scalar : (0xF00U >> length & 0xFF) | scalar >> (6 * (length - 1)));
    for (int rest = length - 2; rest >= 0; --rest) {
      put(0x80 | (scalar >> (6 * rest) & 0x3F));
    }
    ASSERT_EQ(decoded(bytes), std::u32string(1, scalar)) << static_cast<unsigned>(scalar);
  }
}

// The examples of the Unicode Standard, tables 3-8 to 3-11.
TEST(Utf8Decoder, ReplacesMaximalSubparts) {
  EXPECT_EQ(decoded("\xC0\xAF\xE0\x80\xBF\xF0\x81\x82\x41"), U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA");
  EXPECT_EQ(decoded("\xED\xA0\x80\xED\xBF\xBF\xED\xAF\x41"), U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA");
  EXPECT_EQ(decoded("\xF4\x91\x92\x93\xFF\x41\x80\xBF\x42"), U"\uFFFD\uFFFD\uFFFD\uFFFD\uFFFDA\uFFFD\uFFFDB");
  EXPECT_EQ(decoded("\xE1\x80\xE2\xF0\x91\x92\xF1\xBF\x41"), U"\uFFFD\uFFFD\uFFFD\uFFFDA");
}

TEST(Utf8Decoder, ReplacesSomethingExactlyWhereTheTextIsNotValid) {
  for (unsigned first = 0; first < 0x100; ++first) {
    for (unsigned second = 0; second < 0x100; ++second) {
      for (unsigned third = 0; third < 0x100; third += 3) {
        // The last byte completes whatever is not complete, and says so.
        const std::string bytes{static_cast<char>(first), static_cast<char>(second), static_cast<char>(third), 'x'};
        if (bytes.starts_with("\xEF\xBF\xBD")) continue;  // U+FFFD itself
        const bool replaced = decoded(bytes).find(Utf8Decoder::replacement) != std::u32string::npos;
        ASSERT_EQ(replaced, !isValidUtf8(bytes)) << first << " " << second << " " << third;
      }
    }
  }
}

}  // namespace
}  // namespace zolt::vt
