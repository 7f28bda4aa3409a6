#include <gtest/gtest.h>

#include <random>

#include "updates/Appcast.h"
#include "updates/AppcastSelection.h"
#include "updates/Feed.h"

namespace zolt {
namespace {

const QByteArray& seed() {
  static const QByteArray xml =
      test::feedOf(test::itemOf("1.2",
                                "<description sparkle:format=\"plain-text\"><![CDATA[new]]></description>"
                                "<pubDate>Sat, 07 Sep 2002 00:00:01 GMT</pubDate><sparkle:criticalUpdate/>"
                                "<sparkle:phasedRolloutInterval>86400</sparkle:phasedRolloutInterval>") +
                   test::itemOf("1.3b2", "<sparkle:channel>beta</sparkle:channel>") + test::informationalItem("2.0"));
  return xml;
}

class Mutator {
 public:
  explicit Mutator(unsigned number) : m_random(number) {}

  QByteArray mutated() {
    QByteArray xml = seed();
    for (int i = below(3); i >= 0; --i) {
      mutate(xml);
    }
    return xml;
  }

 private:
  int below(qsizetype bound) { return static_cast<int>(m_random() % static_cast<unsigned>(bound)); }

  void mutate(QByteArray& xml) {
    if (xml.isEmpty()) return;
    const int at = below(xml.size());
    const int length = below(40);
    static const QByteArray tokens[] = {"<",         "</item>", "<item>", "\"",    "&amp;",  "&x;",
                                        "<![CDATA[", "]]>",     "<!--",   "-->",   "-",      "99999999999999999999",
                                        "sparkle:",  "<?x?>",   "\xff",   "<rss>", "</rss>", " url=''",
                                        "b"};
    switch (below(5)) {
      case 0:
        xml[at] = static_cast<char>(below(256));
        break;
      case 1:
        xml.remove(at, length);
        break;
      case 2:
        xml.insert(at, tokens[below(std::size(tokens))]);
        break;
      case 3:
        xml.insert(below(xml.size()), xml.mid(at, length));
        break;
      default:
        xml.replace("1.2", tokens[below(std::size(tokens))]);
        break;
    }
  }

  std::mt19937 m_random;
};

TEST(AppcastRandom, MutatedFeedsNeverYieldAnIncompleteItem) {
  int readable = 0;
  int selected = 0;
  for (unsigned number = 0; number < 20000; ++number) {
    const auto items = parseAppcast(Mutator(number).mutated(), test::kFeedUrl, QStringLiteral("linux"));
    if (!items) continue;
    ++readable;
    for (const AppcastItem& item : items.value()) {
      ASSERT_FALSE(item.version.isEmpty()) << number;
      ASSERT_FALSE(item.shortVersion.isEmpty()) << number;
      ASSERT_TRUE(item.enclosure || item.informational) << number;
      ASSERT_TRUE(!item.informational || !item.link.isEmpty()) << number;
      ASSERT_TRUE(!item.enclosure || !item.enclosure->url.host().isEmpty()) << number;
    }
    const AppcastSelection selection =
        selectItem(items.value(), {.kind = CheckKind::Background,
                                   .runningVersion = QStringLiteral("1.0"),
                                   .systemVersion = QStringLiteral("6.1"),
                                   .skippedVersion = {},
                                   .rolloutGroup = static_cast<int>(number % 7),
                                   .now = QDateTime(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC)});
    if (selection.outcome == AppcastSelection::Outcome::Offered) ++selected;
  }
  // Enough mutated feeds are still valid, and enough are not.
  EXPECT_GT(readable, 1000);
  EXPECT_LT(readable, 19000);
  EXPECT_GT(selected, 500);
}

TEST(AppcastRandom, EveryPrefixIsRejected) {
  const QByteArray end = "</rss>";
  for (qsizetype length = 0; length < seed().lastIndexOf(end) + end.size(); ++length) {
    ASSERT_FALSE(parseAppcast(seed().first(length), test::kFeedUrl, QStringLiteral("linux"))) << length;
  }
}

}  // namespace
}  // namespace zolt
