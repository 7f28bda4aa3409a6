#include "updates/FeedDate.h"

#include <gtest/gtest.h>

#include <utility>

namespace zolt {
namespace {

TEST(FeedDate, ReadsTheDatesOfRfc822) {
  const std::pair<const char*, const char*> cases[] = {
      {"Sat, 07 Sep 2002 00:00:01 GMT", "2002-09-07T00:00:01Z"},
      {"7 Sep 02 00:00 UT", "2002-09-07T00:00:00Z"},
      {"Sat, 07 Sep 2002 00:00:01 -0130", "2002-09-07T01:30:01Z"},
      {"Sat, 07 Sep 2002 20:00:00 EST", "2002-09-08T01:00:00Z"},
      {" 1 jan 99 12:00:00 z ", "1999-01-01T12:00:00Z"},
      {"Sun, 29 Feb 2004 10:00:00 +0000", "2004-02-29T10:00:00Z"},
  };
  for (const auto& [text, moment] : cases) {
    EXPECT_EQ(dateOfFeed(QString::fromLatin1(text)), QDateTime::fromString(QString::fromLatin1(moment), Qt::ISODate))
        << text;
    EXPECT_TRUE(dateOfFeed(QString::fromLatin1(text)).isValid()) << text;
  }
}

TEST(FeedDate, RejectsEverythingElse) {
  for (const char* text :
       {"", "2002-09-07T00:00:01Z", "Sat, 31 Feb 2002 00:00:01 GMT", "Sat, 07 Foo 2002 00:00:01 GMT",
        "Sat, 07 Sep 2002 25:00:01 GMT", "Sat, 07 Sep 2002 00:00:01", "Sat, 07 Sep 2002 00:00:01 +9900",
        "Sat, 07 Sep 2002 00:00:01 XYZ", "Sat, 07 Sep 2002 00:00:01 GMT x"}) {
    EXPECT_FALSE(dateOfFeed(QString::fromLatin1(text)).isValid()) << text;
  }
}

}  // namespace
}  // namespace zolt
