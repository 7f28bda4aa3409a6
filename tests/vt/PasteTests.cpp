#include "vt/input/Paste.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <string_view>

#include "text/GraphemeClusters.h"
#include "vt/KeyEvents.h"

namespace zolt::vt {
namespace {

using namespace std::string_literals;

constexpr std::string_view kOpening = "\x1B[200~";
constexpr std::string_view kClosing = "\x1B[201~";

std::string pasted(std::string_view text) {
  return encodePaste(text, false);
}

TEST(VtPaste, SendsTextUnchanged) {
  EXPECT_EQ(pasted("ls -l ~"), "ls -l ~");
  EXPECT_EQ(pasted("\u00E9\u65E5\U0001F600\u00A0\u200D\U0010FFFF"), "\u00E9\u65E5\U0001F600\u00A0\u200D\U0010FFFF");
  EXPECT_EQ(pasted("a\tb"), "a\tb");
}

TEST(VtPaste, SendsLineEndsLikeEnter) {
  EXPECT_EQ(pasted("a\nb\r\nc\rd"), "a\rb\rc\rd");
  EXPECT_EQ(pasted("\n\n"), "\r\r");
  EXPECT_EQ(pasted("\r\r\n\n"), "\r\r\r");
  EXPECT_EQ(pasted("\n\r"), "\r\r");
  EXPECT_EQ(pasted("a\r"), "a\r");
}

TEST(VtPaste, BracketsTextInBracketedMode) {
  EXPECT_EQ(encodePaste("a\nb", true), "\x1B[200~a\rb\x1B[201~");
  EXPECT_EQ(encodeFocus(true), "\x1B[I");
  EXPECT_EQ(encodeFocus(false), "\x1B[O");
}

TEST(VtPaste, SendsNothingForNothing) {
  for (const bool bracketed : {false, true}) {
    EXPECT_EQ(encodePaste("", bracketed), "");
    EXPECT_EQ(encodePaste("\x1B\x07\u009B\x7F", bracketed), "");
  }
}

TEST(VtPaste, RemovesControlCharacters) {
  for (char32_t control = 0; control < 0xA0; ++control) {
    if (control == 0x20) control = 0x7F;
    const std::string text = toUtf8(std::u32string{U'a', control, U'b'});
    const std::string expected = control == '\t' ? "a\tb" : control == '\n' || control == '\r' ? "a\rb" : "ab";
    EXPECT_EQ(pasted(text), expected) << static_cast<unsigned>(control);
  }
}

TEST(VtPaste, ReplacesInvalidUtf8) {
  EXPECT_EQ(pasted("a\xFF\x9Bz"), "a\uFFFD\uFFFDz");
  EXPECT_EQ(pasted("\xED\xA0\x80"), "\uFFFD\uFFFD\uFFFD");
  EXPECT_EQ(pasted("\xC0\x9B"), "\uFFFD\uFFFD");
  EXPECT_EQ(pasted("a\xE6\x97"), "a\uFFFD");
}

TEST(VtPaste, KeepsTextWithinItsBrackets) {
  EXPECT_EQ(encodePaste("x\x1B[201~rm\n", true), "\x1B[200~x[201~rm\r\x1B[201~");
  EXPECT_EQ(encodePaste("x\u009B201~rm", true), "\x1B[200~x201~rm\x1B[201~");
  EXPECT_EQ(encodePaste("\x1B\x1B[201~[201~", true), "\x1B[200~[201~[201~\x1B[201~");
  EXPECT_EQ(encodePaste("\x1B[20\x1B[201~1~", true), "\x1B[200~[20[201~1~\x1B[201~");
}

// Removing something must not join the halves of a control: neither its bytes nor a lead byte and a stray continuation.
TEST(VtPaste, DoesNotFormAControlByRemovingAnother) {
  EXPECT_EQ(pasted("\xC2\x1B\x9B"), "\uFFFD\uFFFD");
  EXPECT_EQ(pasted("\xC2\xC2\x9B\x9B"), "\uFFFD\uFFFD");
  EXPECT_EQ(pasted("\xC2\0\x9B"s), "\uFFFD\uFFFD");
}

// Only text gets between the brackets, however brackets and parts of them are nested in it.
TEST(VtPaste, SendsNoControlsForNestedBrackets) {
  const std::string pieces[] = {"\x1B[201~", "\x1B[200~", "\x1B",     "\u009B", "\xC2", "\x9B", "[201~",   "2",
                                "01~",       "\r",        "\n",       "\t",     "\x7F", "\0"s,  "\x80",    "\xE2",
                                "a",         "\u65E5",    "\xF0\x9F", "\u0090", "\x18", "\x1A", "\xC2\x1B"};
  std::mt19937 random(11);
  for (int round = 0; round < 20000; ++round) {
    std::string text;
    for (auto length = random() % 12; length > 0; --length) {
      // Insert into the middle, to nest pieces within pieces.
      text.insert(text.empty() ? 0 : random() % (text.size() + 1), pieces[random() % std::size(pieces)]);
    }
    const std::string plain = pasted(text);
    ASSERT_TRUE(isValidUtf8(plain)) << shown(text);
    forEachScalar(plain, [&](char32_t scalar) {
      ASSERT_TRUE(!isControl(scalar) || scalar == '\r' || scalar == '\t') << shown(text);
    });
    ASSERT_EQ(pasted(plain), plain) << shown(text);

    const std::string bracketed = encodePaste(text, true);
    const std::string expected = plain.empty() ? "" : std::string(kOpening) + plain + std::string(kClosing);
    ASSERT_EQ(bracketed, expected) << shown(text);
  }
}

}  // namespace
}  // namespace zolt::vt
