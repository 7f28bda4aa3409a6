#include "terminal/links/LinkFinder.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace zolt {
namespace {

using Links = std::vector<std::string>;

Links linksIn(std::string_view line) {
  Links links;
  for (const ByteRange& range : findLinks(line)) {
    links.emplace_back(line.substr(range.begin, range.end - range.begin));
  }
  return links;
}

TEST(LinkFinder, FindsTheLinksOfALine) {
  struct Row {
    std::string_view line;
    Links links;
  };
  const Row rows[] = {
      {"", {}},
      {"no links: here", {}},
      {"https://en.example", {"https://en.example"}},
      {"see HTTP://en.example/a?b=c&d[]=e#f now", {"HTTP://en.example/a?b=c&d[]=e#f"}},
      {"http://a https://b,ftp://c", {"http://a", "https://b,ftp://c"}},
      {"a:b:http://c", {"http://c"}},
      {"http://a http://b", {"http://a", "http://b"}},
      {"file:///etc/hosts ssh://me@host sftp://h/ git://g gemini://g gopher://g ftps://f",
       {"file:///etc/hosts", "ssh://me@host", "sftp://h/", "git://g", "gemini://g", "gopher://g", "ftps://f"}},

      {"(see https://en.example/wiki/A_(b)).", {"https://en.example/wiki/A_(b)"}},
      {"(see https://en.example/wiki/A_(b).)", {"https://en.example/wiki/A_(b)"}},
      {"[https://en.example/a]", {"https://en.example/a"}},
      {"[text](https://en.example/a)", {"https://en.example/a"}},
      {"https://[::1]:80/", {"https://[::1]:80/"}},
      {"https://en.example/a(", {"https://en.example/a"}},
      {"<https://en.example/a>", {"https://en.example/a"}},
      {"\"https://en.example/a\",", {"https://en.example/a"}},
      {"'https://en.example/a','b'", {"https://en.example/a"}},
      {"https://en.example/it's", {"https://en.example/it's"}},
      {"`https://en.example/a`", {"https://en.example/a"}},
      {"{\"url\":\"https://en.example/a\"}", {"https://en.example/a"}},
      {"│https://en.example/a│", {"https://en.example/a"}},
      {"https://en.example/a|less", {"https://en.example/a"}},
      {"\x1B[https://en.example/a\x1B[0m", {"https://en.example/a"}},

      {"Is it https://en.example/a?", {"https://en.example/a"}},
      {"https://en.example/a... https://en.example/b!?", {"https://en.example/a", "https://en.example/b"}},
      {"https://en.example/a;:,.", {"https://en.example/a"}},
      {"https://en.example/a/", {"https://en.example/a/"}},
      {"https://en.example/a-_~*&=%20", {"https://en.example/a-_~*&=%20"}},

      {"https://ja.example/日本語", {"https://ja.example/日本語"}},
      {"見てhttps://ja.example/日本。次", {"https://ja.example/日本"}},
      {"“https://en.example/é”", {"https://en.example/é"}},
      {"https://en.example/e\u0301\u00A0b", {"https://en.example/e\u0301"}},
      {"https://en.example/a\u202Eb", {"https://en.example/a"}},
      {"https://en.example/a\xFF"
       "b",
       {"https://en.example/a"}},
      {"https://en.example/a\xE6\x97", {"https://en.example/a"}},

      {"mailto:me@en.example.", {"mailto:me@en.example"}},
      {"mailto:me@en.example?subject=a", {"mailto:me@en.example?subject=a"}},
      {"mailto:me mailto:@ mailto:a@ mailto:@en.example", {}},

      {"xhttp://a 1http://a _http://a -http://a +http://a", {}},
      {"http:/a http:a http: https:// http://. http://)", {}},
      {"://a", {}},
      {"view-source:https://a", {"https://a"}},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(linksIn(row.line), row.links) << row.line;
  }
}

TEST(LinkFinder, GivesTheirPlacesInBytes) {
  EXPECT_EQ(findLinks("é http://a."), (std::vector{ByteRange{.begin = 3, .end = 11}}));
}

TEST(LinkFinder, FindsOrderedRangesInAnyBytes) {
  constexpr std::string_view pieces[] = {"http", ":", "//",   "a",  "(",       ")", "[",        "]",   ".",
                                         "'",    " ", "\xFF", "日", "mailto:", "@", "https://", "\xE6"};
  std::mt19937 random(1);
  for (int round = 0; round < 2000; ++round) {
    std::string line;
    for (int i = 0; i < 40; ++i) {
      line += pieces[random() % std::size(pieces)];
    }
    std::size_t end = 0;
    for (const ByteRange& range : findLinks(line)) {
      EXPECT_LE(end, range.begin) << line;
      EXPECT_LT(range.begin, range.end) << line;
      EXPECT_LE(range.end, line.size()) << line;
      end = range.end;
    }
  }
}

TEST(LinkFinder, CanReadEveryByteOfALongLineOnce) {
  std::string line;
  for (int i = 0; i < 200'000; ++i) {
    line += i % 2 == 0 ? "mailto:" : "http://((";
  }
  EXPECT_EQ(findLinks(line).size(), 0U);
  const std::string dots = "http://a" + std::string(1'000'000, '.');
  EXPECT_EQ(linksIn(dots), Links{"http://a"});
}

}  // namespace
}  // namespace zolt
