#include "text/TextAttributes.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

namespace zolt {
namespace {

TextAttributes with(const std::function<void(TextAttributes&)>& change) {
  TextAttributes attributes;
  change(attributes);
  return attributes;
}

// The default attributes, and variations of them in one field each.
std::vector<TextAttributes> differentOnes() {
  return {
      TextAttributes{},
      with([](TextAttributes& a) { a.font.size = 15; }),
      with([](TextAttributes& a) { a.font.weight = FontWeight::Bold; }),
      with([](TextAttributes& a) { a.font.slant = FontSlant::Italic; }),
      with([](TextAttributes& a) { a.underline = Line::Single; }),
      with([](TextAttributes& a) { a.strikethrough = Line::Single; }),
      with([](TextAttributes& a) { a.foreground.red = 0.5; }),
      with([](TextAttributes& a) { a.foreground.green = 0.5; }),
      with([](TextAttributes& a) { a.foreground.blue = 0.5; }),
      with([](TextAttributes& a) { a.foreground.alpha = 0.5; }),
      with([](TextAttributes& a) { a.background = Color::clear; }),
      with([](TextAttributes& a) { a.background = Color::white; }),
      with([](TextAttributes& a) { a.background = Color::black; }),
  };
}

TEST(TextAttributes, AreEqualExactlyWhereEveryFieldIs) {
  const std::vector<TextAttributes> ones = differentOnes();
  for (std::size_t i = 0; i < ones.size(); ++i) {
    for (std::size_t k = 0; k < ones.size(); ++k) {
      EXPECT_EQ(ones[i] == ones[k], i == k) << i << ' ' << k;
    }
  }
}

TEST(Color, KeepsComponentsAboveOne) {
  const Color bright = Color::gray(4.0);
  EXPECT_EQ(bright, (Color{4.0, 4.0, 4.0, 1.0}));
  EXPECT_EQ(bright.withAlpha(0.5), (Color{4.0, 4.0, 4.0, 0.5}));
}

TEST(Color, TellsClearFromBlack) {
  EXPECT_NE(Color::clear, Color::black);
  EXPECT_EQ(Color::black.withAlpha(0.0), Color::clear);
}

}  // namespace
}  // namespace zolt
