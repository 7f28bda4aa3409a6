#include "terminal/hints/HintFinder.h"

#include <gtest/gtest.h>

#include <ostream>
#include <random>
#include <string>

#include "terminal/hints/HintLabels.h"

namespace zolt {
namespace {

using Hints = std::vector<std::string>;

// Each with the first letter of its kind.
Hints hintsIn(std::string_view line, std::span<const ByteRange> taken = {}) {
  Hints hints;
  for (const FoundHint& hint : findHints(line, taken)) {
    std::string text(1, "LPHA"[static_cast<std::size_t>(hint.kind)]);
    text += ' ';
    text += line.substr(hint.range.begin, hint.range.end - hint.range.begin);
    hints.push_back(std::move(text));
  }
  return hints;
}

struct Row {
  std::string_view line;
  Hints hints;
};

void expectHints(std::span<const Row> rows) {
  for (const Row& row : rows) {
    EXPECT_EQ(hintsIn(row.line), row.hints) << row.line;
  }
}

TEST(HintFinder, FindsLinksBeforeAllElse) {
  const Row rows[] = {
      {"", {}},
      {"nothing here", {}},
      {"see https://en.example/a/b.c:80 now", {"L https://en.example/a/b.c:80"}},
      {"http://10.0.0.1/x http://a/1a2b3c4d", {"L http://10.0.0.1/x", "L http://a/1a2b3c4d"}},
      {"(file:///etc/hosts) /etc/hosts", {"L file:///etc/hosts", "P /etc/hosts"}},
  };
  expectHints(rows);
}

TEST(HintFinder, FindsPathsWithTheirLineNumbers) {
  const Row rows[] = {
      {"/etc/fstab", {"P /etc/fstab"}},
      {"see /etc/fstab.", {"P /etc/fstab"}},
      {"~/notes, ./a and ../b...", {"P ~/notes", "P ./a", "P ../b"}},
      {"../.. is up, ../../x too", {"P ../../x"}},
      {"src/main.cpp:12:5: error: no", {"P src/main.cpp:12:5"}},
      {"src/main.cpp:12:int main() {", {"P src/main.cpp:12"}},
      {"src/main.cpp:12int", {"P src/main.cpp"}},
      {"src/main.cpp:12:5:7", {"P src/main.cpp:12:5"}},
      {"main.cpp:12: warning", {"P main.cpp:12"}},
      {"main.cpp: warning", {}},
      {"main:12 a.1:2", {}},
      {"/bin:12345678901", {"P /bin"}},
      {"\"/a/b c\" '/d/e' (f/g/h) [i/jkl] <m/nop>", {"P /a/b", "P /d/e", "P f/g/h", "P i/jkl", "P m/nop"}},
      {"PATH=/usr/bin:/bin", {"P /usr/bin", "P /bin"}},
      {"host:/srv/data me@host:dir/file", {"P /srv/data", "P dir/file"}},
      {"diff --git a/x.cpp b/x.cpp", {"P a/x.cpp", "P b/x.cpp"}},
      {"origin/main..feature/x-1", {"P origin/main..feature/x-1"}},
      {"@scope/package /c++/v1 a/b~", {"P @scope/package", "P /c++/v1"}},
      {"/home/jörg/mühe.txt:3", {"P /home/jörg/mühe.txt:3"}},
      {"│/box/ed│", {"P /box/ed"}},
      {"n/a km/h 1/2 12/31/2026 / // /// */ /* and//or", {}},
      {"<b>bold</b> <br/>", {}},
      {"scheme://host/path", {}},
  };
  expectHints(rows);
}

TEST(HintFinder, FindsHashesOfCommits) {
  const Row rows[] = {
      {"commit 1a2b3c4", {"H 1a2b3c4"}},
      {"1a2b3c", {}},
      {"0123456789abcdef0123456789abcdef01234567", {"H 0123456789abcdef0123456789abcdef01234567"}},
      {"0123456789abcdef0123456789abcdef012345678", {}},
      {"1a2b3c4..5d6e7f8 (9a8b7c6)", {"H 1a2b3c4", "H 5d6e7f8", "H 9a8b7c6"}},
      {"1a2b3c4-dirty 1a2b3c4: subject", {"H 1a2b3c4", "H 1a2b3c4"}},
      {"1234567 20260101 defaced effaced", {}},
      {"1A2B3C4D 0x1a2b3c4d g1a2b3c4 1a2b3c4g _1a2b3c4 ä1a2b3c4", {}},
      {"123e4567-e89b-12d3-a456-426614174000", {}},
      {"fix-1a2b3c4", {"H 1a2b3c4"}},
      {"objects/1a2b3c4d", {"P objects/1a2b3c4d"}},
  };
  expectHints(rows);
}

TEST(HintFinder, FindsAddresses) {
  const Row rows[] = {
      {"10.0.0.1", {"A 10.0.0.1"}},
      {"from 192.168.1.20:8080, 10.0.0.0/24.", {"A 192.168.1.20", "A 10.0.0.0"}},
      {"ping 10.0.0.1.", {"A 10.0.0.1"}},
      {"256.0.0.1 1.2.3 1.2.3.4.5 v1.2.3.4 1.2.3.4a 01.2.3.4", {}},
      {"10.0.0.1:/srv/data", {"A 10.0.0.1", "P /srv/data"}},
      {"::1 fe80::1%eth0 2001:db8::a/64", {"A ::1", "A fe80::1", "A 2001:db8::a"}},
      {"[::1]:80 [2001:db8:0:0:0:0:0:1]", {"A ::1", "A 2001:db8:0:0:0:0:0:1"}},
      {"::ffff:10.0.0.1 addr:fe80::1: up", {"A ::ffff:10.0.0.1", "A fe80::1"}},
      {"12:34:56 00:1a:2b:3c:4d:5e :: std::a abc::def a::1b::2 x::1", {}},
  };
  expectHints(rows);
}

TEST(HintFinder, LeavesOutWhatIsTaken) {
  const std::string_view line = "/a/b https://c.example /d/e";
  const ByteRange taken[] = {{.begin = 0, .end = 4}, {.begin = 8, .end = 10}};
  EXPECT_EQ(hintsIn(line, taken), (Hints{"P /d/e"})) << "and no part of what is taken in part";
}

TEST(HintFinder, CutsAPathFromItsLineNumber) {
  EXPECT_EQ(pathWithoutLine("a/b:12:3"), "a/b");
  EXPECT_EQ(pathWithoutLine("a/b"), "a/b");
}

// Each of these would take hours if a part of the line were looked at again for every character.
TEST(HintFinder, TakesALongLineOfAnything) {
  constexpr std::size_t kSize = 1 << 20;
  for (const std::string_view part : {"/", ".", ":", "-", "a/", "1.", "1:", "::", "a:", "~", "1a2b3c4-", "1a2b3c4.",
                                      "http://", "a.b:1:", "\xFF", "[", "0"}) {
    std::string line;
    while (line.size() < kSize) {
      line += part;
    }
    std::size_t covered = 0;
    for (const FoundHint& hint : findHints(line)) {
      EXPECT_GE(hint.range.begin, covered);
      covered = hint.range.end;
    }
    EXPECT_LE(covered, line.size());
  }
}

TEST(HintFinder, FindsRangesInOrderInWhateverBytes) {
  std::mt19937 random(7);
  constexpr std::string_view kBytes = "abc019/.:~-_@ http://\"'<>[]()\xC3\xA4\xFF\n\t";
  for (int round = 0; round < 20'000; ++round) {
    std::string line;
    for (auto left = random() % 60; left > 0; --left) {
      line += kBytes[random() % kBytes.size()];
    }
    std::size_t end = 0;
    for (const FoundHint& hint : findHints(line)) {
      ASSERT_LE(end, hint.range.begin) << line;
      ASSERT_LT(hint.range.begin, hint.range.end) << line;
      end = hint.range.end;
    }
    ASSERT_LE(end, line.size()) << line;
  }
}

TEST(HintLabels, NoneBeginsAnother) {
  for (const std::size_t count : {0, 1, 2, 25, 26, 27, 51, 52, 53, 100, 400, 675, 676}) {
    const std::vector<std::string> labels = hintLabels(count);
    ASSERT_EQ(labels.size(), count);
    for (const std::string& one : labels) {
      EXPECT_TRUE(one.size() == 1 || one.size() == 2) << one;
      for (const std::string& other : labels) {
        EXPECT_TRUE(&one == &other || !other.starts_with(one)) << one << " " << other << " of " << count;
      }
    }
  }
}

TEST(HintLabels, AreShortAndOnTheHomeRowAsFarAsPossible) {
  EXPECT_EQ(hintLabels(3), (std::vector<std::string>{"a", "s", "d"}));
  EXPECT_EQ(hintLabels(26).back().size(), 1U);
  const std::vector<std::string> more = hintLabels(27);
  EXPECT_EQ(more[24].size(), 1U);
  EXPECT_EQ(more[25].size(), 2U);
  EXPECT_EQ(more[25][1], 'a');
  EXPECT_EQ(hintLabels(1000).size(), kMaxHintLabels);
}

}  // namespace
}  // namespace zolt
