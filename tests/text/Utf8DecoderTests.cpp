#include "text/Utf8Decoder.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "text/GraphemeClusters.h"

namespace zolt {
namespace {

std::u32string decoded(std::string_view bytes) {
  std::u32string text;
  forEachScalar(bytes, [&](char32_t scalar) { text += scalar; });
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

TEST(Utf8Decoder, ReplacesSomethingIfAndOnlyIfTheTextIsInvalid) {
  for (unsigned first = 0; first < 0x100; ++first) {
    for (unsigned second = 0; second < 0x100; ++second) {
      for (unsigned third = 0; third < 0x100; third += 3) {
        // The last byte ends whatever is incomplete.
        const std::string bytes{static_cast<char>(first), static_cast<char>(second), static_cast<char>(third), 'x'};
        if (bytes.starts_with("\xEF\xBF\xBD")) continue;  // U+FFFD itself
        const bool replaced = decoded(bytes).find(kReplacementCharacter) != std::u32string::npos;
        ASSERT_EQ(replaced, !isValidUtf8(bytes)) << first << " " << second << " " << third;
      }
    }
  }
}

TEST(DecodeUtf8, DecodesWhatTheDecoderDoesNotReplace) {
  for (unsigned first = 0; first < 0x100; ++first) {
    for (unsigned second = 0; second < 0x100; ++second) {
      for (const char* const rest : {"", "\x80", "\xBF", "\x80\x80", "\xBF\xBF", "x", "\xC3\xA4"}) {
        const std::string bytes = std::string{static_cast<char>(first), static_cast<char>(second)} + rest;
        const DecodedScalar whole = decodeUtf8(bytes.data(), bytes.data() + bytes.size());
        const char32_t streamed = decoded(bytes).front();
        if (bytes.starts_with("\xEF\xBF\xBD")) continue;  // U+FFFD itself
        ASSERT_EQ(whole.length == 0, streamed == kReplacementCharacter) << first << " " << second << " " << rest;
        const char32_t expected = whole.length == 0 ? 0 : streamed;
        ASSERT_EQ(whole.scalar, expected) << first << " " << second << " " << rest;
      }
    }
  }
}

TEST(DecodeUtf8, DecodesNothingOfATruncatedScalar) {
  const std::string bytes = "\xF0\x9F\x98\x80";
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_EQ(decodeUtf8(bytes.data(), bytes.data() + size).length, 0U) << size;
  }
  EXPECT_EQ(decodeUtf8(bytes.data(), bytes.data() + bytes.size()).scalar, U'\U0001F600');
}

}  // namespace
}  // namespace zolt
