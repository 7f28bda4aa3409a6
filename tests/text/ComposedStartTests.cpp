#include <gtest/gtest.h>
#include <utf8proc.h>

#include <string>

#include "text/GraphemeClusters.h"
#include "text/RandomText.h"

namespace zolt {
namespace {

// The canonical composition (NFC) of the whole text, by utf8proc.
std::string composed(const std::string& text) {
  utf8proc_uint8_t* result = nullptr;
  const auto size =
      utf8proc_map(reinterpret_cast<const utf8proc_uint8_t*>(text.data()), static_cast<utf8proc_ssize_t>(text.size()),
                   &result, static_cast<utf8proc_option_t>(UTF8PROC_STABLE | UTF8PROC_COMPOSE));
  std::string copy(reinterpret_cast<const char*>(result), static_cast<std::size_t>(size));
  std::free(result);
  return copy;
}

testing::AssertionResult startsAsComposed(const std::string& cluster) {
  const std::string whole = composed(cluster);
  std::size_t length = 0;
  const char32_t first = scalarAt(whole, 0, length);
  const ComposedStart start = composedStart(cluster);
  if (start.first == first && start.alone == (length == whole.size())) return testing::AssertionSuccess();
  return testing::AssertionFailure() << escaped(cluster) << " starts with " << static_cast<unsigned>(start.first)
                                     << " instead of " << static_cast<unsigned>(first);
}

void expectStart(const std::string& cluster, char32_t first, bool alone) {
  const ComposedStart start = composedStart(cluster);
  EXPECT_EQ(static_cast<unsigned>(start.first), static_cast<unsigned>(first)) << escaped(cluster);
  EXPECT_EQ(start.alone, alone) << escaped(cluster);
}

TEST(ComposedStart, IsTheFirstCharacterWhenNothingComposes) {
  expectStart("m", 'm', true);
  expectStart("m\u0308", 'm', false);
  expectStart("\u0301", U'\u0301', true);
  expectStart("\r\n", '\r', false);
}

TEST(ComposedStart, IsTheComposedLetterWhenAMarkComposes) {
  expectStart("e\u0301", U'\u00E9', true);
  expectStart("e\u0301\u0301", U'\u00E9', false);
  expectStart("a\u0323\u0302", U'\u1EAD', true);
}

TEST(ComposedStart, OrdersMarksBeforeComposing) {
  expectStart("m\u0308\u0323", U'\u1E43', false);
  expectStart("a\u0302\u0323", U'\u1EAD', true);
}

TEST(ComposedStart, ReplacesCanonicalEquivalents) {
  expectStart("\u212A", 'K', true);
  expectStart("\u037E", ';', true);
  expectStart("\u1FEF", '`', true);
  expectStart("\u212B", U'\u00C5', true);
  expectStart("\u0958", U'\u0915', false);  // excluded from composition
}

TEST(ComposedStart, ComposesSyllables) {
  expectStart("\u1100\u1161\u11A8", U'\uAC01', true);
  expectStart("\uAC01", U'\uAC01', true);
}

TEST(ComposedStart, LooksAtEveryMarkOfALongCluster) {
  std::string cluster = "m";
  for (int i = 0; i < 500; ++i) {
    cluster += "\u0308";
  }
  expectStart(cluster, 'm', false);
  expectStart(cluster + "\u0323", U'\u1E43', false);  // a dot below sorts before every mark above
}

TEST(ComposedStart, AgreesWithTheWholeCompositionOfRandomClusters) {
  RandomText random(4);
  for (int round = 0; round < 20000; ++round) {
    const std::string text = random.text(20);
    for (std::size_t position = 0; position < text.size();) {
      const std::size_t end = longClusterEnd(text, position);
      ASSERT_TRUE(startsAsComposed(text.substr(position, end - position)));
      position = end;
    }
  }
}

TEST(ComposedStart, AgreesWithTheWholeCompositionOfRandomMarks) {
  constexpr Piece kMarks[] = {{"\u0301"}, {"\u0308"}, {"\u0302"}, {"\u0323"}, {"\u0327"},
                              {"\u0345"}, {"\u0338"}, {"\u0313"}, {"\u05B4"}, {"\u20DD"}};
  RandomText random(5, kMarks);
  for (int round = 0; round < 20000; ++round) {
    for (const char* base : {"a", "m", "A", "o", "=", "~", "@", "\u03B1", "\u212A", "\u1F80"}) {
      ASSERT_TRUE(startsAsComposed(base + random.text(round % 50 == 0 ? 60 : 6)));
    }
  }
}

}  // namespace
}  // namespace zolt
