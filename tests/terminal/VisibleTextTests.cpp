#include "terminal/VisibleText.h"

#include <gtest/gtest.h>

#include "vt/input/InputText.h"

namespace zolt {
namespace {

TEST(VisibleText, KeepsWhatCanBeSeen) {
  for (const std::string_view text : {"ls -l ~", "é日本\U0001F600", "e\u0301",
                                      "\u0646\u0627\u0645\u0647\u200C\u0627\u06CC", "\U0001F469\u200D\U0001F4BB"}) {
    EXPECT_EQ(visibleText(text), text);
  }
}

TEST(VisibleText, ShowsWhatCannotBeSeen) {
  EXPECT_EQ(visibleText("\x1B[31m\r\n\t\x7F"), "␛[31m␍␊␉␡");
  EXPECT_EQ(visibleText(std::string_view("\0", 1)), "␀");
  EXPECT_EQ(visibleText("a\u202Eb\u2066c\u200Ed"), "a<U+202E>b<U+2066>c<U+200E>d");
  EXPECT_EQ(visibleText("\u009B\u2028\u2029\u00AD\u200B\uFEFF"), "<U+009B><U+2028><U+2029><U+00AD><U+200B><U+FEFF>");
  EXPECT_EQ(visibleText("\U000E0041"), "<U+E0041>");
  EXPECT_EQ(visibleText("a\xFFz"), "a\uFFFDz");
}

TEST(VisibleText, HasEveryCharacterAsItIsUnlessItIsInvisible) {
  for (char32_t scalar = 0; scalar <= 0x10FFFF; ++scalar) {
    if (scalar >= 0xD800 && scalar <= 0xDFFF) continue;
    std::string shown;
    appendVisible(shown, scalar);
    ASSERT_EQ(shown == vt::toUtf8({&scalar, 1}), !isInvisible(scalar)) << static_cast<unsigned>(scalar);
  }
}

}  // namespace
}  // namespace zolt
