#include "updates/Appcast.h"

#include <gtest/gtest.h>

#include "updates/Feed.h"
#include "updates/UpdateError.h"

namespace zolt {
namespace {

using test::feedOf;
using test::itemOf;

Result<std::vector<AppcastItem>> parse(const QByteArray& xml, const QString& system = QStringLiteral("linux")) {
  return parseAppcast(xml, test::kFeedUrl, system);
}

std::vector<AppcastItem> itemsOf(const QByteArray& items) {
  auto result = parse(feedOf(items));
  EXPECT_TRUE(result) << (result ? "" : result.reason());
  return result ? result.value() : std::vector<AppcastItem>();
}

void expectError(const QByteArray& xml, UpdateError error) {
  const auto result = parse(xml);
  ASSERT_FALSE(result);
  EXPECT_EQ(result.reason(), sentenceOf(error).toStdString());
}

std::vector<QString> versionsOf(const QByteArray& items) {
  std::vector<QString> versions;
  for (const AppcastItem& item : itemsOf(items)) {
    versions.push_back(item.version);
  }
  return versions;
}

TEST(Appcast, AnItemIsReadCompletely) {
  const auto items = itemsOf(
      "<item><title>Version 1.2</title><link>https://example.org/1.2</link>"
      "<pubDate>Sat, 07 Sep 2002 02:00:01 +0200</pubDate><description><![CDATA[<b>New</b>]]></description>"
      "<sparkle:version>120</sparkle:version><sparkle:shortVersionString>1.2</sparkle:shortVersionString>"
      "<sparkle:minimumSystemVersion>5.10</sparkle:minimumSystemVersion><sparkle:releaseNotesLink>notes/1.2.html"
      "</sparkle:releaseNotesLink><sparkle:channel>beta</sparkle:channel><sparkle:criticalUpdate/>"
      "<sparkle:phasedRolloutInterval>3600</sparkle:phasedRolloutInterval>"
      "<enclosure url='files/Zolt%201.2.tar.gz?a=1&amp;b=2' length='1234' type='application/gzip'"
      " sparkle:edSignature='c2ln' sparkle:os='linux'/></item>");
  ASSERT_EQ(items.size(), 1U);
  const AppcastItem& item = items[0];
  EXPECT_EQ(item.title, QStringLiteral("Version 1.2"));
  EXPECT_EQ(item.link, QUrl(QStringLiteral("https://example.org/1.2")));
  EXPECT_EQ(item.published, QDateTime(QDate(2002, 9, 7), QTime(0, 0, 1), Qt::UTC));
  EXPECT_EQ(item.description, QStringLiteral("<b>New</b>"));
  EXPECT_FALSE(item.descriptionIsPlainText);
  EXPECT_EQ(item.version, QStringLiteral("120"));
  EXPECT_EQ(item.shortVersion, QStringLiteral("1.2"));
  EXPECT_EQ(item.minimumSystemVersion, QStringLiteral("5.10"));
  EXPECT_EQ(item.releaseNotesLink, QUrl(QStringLiteral("https://updates.example.org/zolt/notes/1.2.html")));
  EXPECT_EQ(item.channel, QStringLiteral("beta"));
  EXPECT_TRUE(item.critical);
  EXPECT_FALSE(item.informational);
  EXPECT_EQ(item.phasedRolloutSeconds, 3600);
  ASSERT_TRUE(item.enclosure);
  EXPECT_EQ(item.enclosure->url,
            QUrl(QStringLiteral("https://updates.example.org/zolt/files/Zolt%201.2.tar.gz?a=1&b=2")));
  EXPECT_EQ(item.enclosure->length, QStringLiteral("1234"));
  EXPECT_EQ(item.enclosure->type, QStringLiteral("application/gzip"));
  EXPECT_EQ(item.enclosure->edSignature, QStringLiteral("c2ln"));
}

TEST(Appcast, ElementsAreRecognisedByNamespaceAndNotByPrefix) {
  const auto other = parse(
      "<rss xmlns:x='http://www.andymatuschak.org/xml-namespaces/sparkle' xmlns:sparkle='http://example.org/else'>"
      "<channel><item><x:version>3</x:version><sparkle:version>9</sparkle:version>"
      "<enclosure url='a' x:edSignature='mine' sparkle:edSignature='else'/></item>"
      "<item><sparkle:version>9</sparkle:version><enclosure url='b'/></item></channel></rss>");
  ASSERT_TRUE(other);
  ASSERT_EQ(other.value().size(), 1U);
  EXPECT_EQ(other.value()[0].version, QStringLiteral("3"));
  EXPECT_EQ(other.value()[0].enclosure->edSignature, QStringLiteral("mine"));
}

TEST(Appcast, ANamespaceThatDiffersByOneCharacterIsIgnored) {
  const auto result = parse(
      "<rss xmlns:s='http://www.andymatuschak.org/xml-namespaces/sparkle/'><channel><item><s:version>1</s:version>"
      "<enclosure url='a'/></item></channel></rss>");
  ASSERT_TRUE(result);
  EXPECT_TRUE(result.value().empty());
}

TEST(Appcast, TheVersionOfTheItemTakesPrecedenceOverThatOfThePackage) {
  const auto items = itemsOf(
      "<item><sparkle:version>2</sparkle:version><enclosure url='a' sparkle:version='1'/></item>"
      "<item><enclosure url='a' sparkle:version='3' sparkle:shortVersionString='three'/></item>"
      "<item><sparkle:version>4</sparkle:version><enclosure url='a'/></item>");
  ASSERT_EQ(items.size(), 3U);
  EXPECT_EQ(items[0].version, QStringLiteral("2"));
  EXPECT_EQ(items[1].version, QStringLiteral("3"));
  EXPECT_EQ(items[1].shortVersion, QStringLiteral("three"));
  EXPECT_EQ(items[2].shortVersion, QStringLiteral("4"));
}

TEST(Appcast, ItemsWithoutAUsableVersionAreIgnored) {
  EXPECT_TRUE(versionsOf("<item><enclosure url='a'/></item>").empty());
  EXPECT_TRUE(versionsOf("<item><sparkle:version> \n </sparkle:version><enclosure url='a'/></item>").empty());
  EXPECT_TRUE(versionsOf(itemOf(QByteArray(101, '1'))).empty());
  EXPECT_EQ(versionsOf(itemOf(QByteArray(100, '1'))).size(), 1U);
}

TEST(Appcast, OnlyItemsInTheChannelCount) {
  const auto result = parse("<rss xmlns:sparkle='http://www.andymatuschak.org/xml-namespaces/sparkle'>" + itemOf("1") +
                            "<channel><group>" + itemOf("2") + "</group>" + itemOf("3") + "<sparkle:item>" +
                            itemOf("4") + "</sparkle:item></channel></rss>");
  ASSERT_TRUE(result);
  ASSERT_EQ(result.value().size(), 1U);
  EXPECT_EQ(result.value()[0].version, QStringLiteral("3"));
}

TEST(Appcast, NestedElementsDoNotBelongToTheItem) {
  const auto items = itemsOf(
      "<item><sparkle:version>1</sparkle:version><link>https://example.org</link><sparkle:deltas>"
      "<enclosure url='delta' sparkle:version='1'/></sparkle:deltas></item>");
  ASSERT_EQ(items.size(), 1U);
  EXPECT_FALSE(items[0].enclosure);
}

TEST(Appcast, TheFirstOfSeveralEqualElementsCounts) {
  EXPECT_EQ(versionsOf("<item><sparkle:version>1</sparkle:version><sparkle:version>2</sparkle:version>"
                       "<enclosure url='a'/></item>"),
            std::vector{QStringLiteral("1")});
}

TEST(Appcast, PackagesForOtherSystemsAreIgnored) {
  const QByteArray items =
      "<item><sparkle:version>1</sparkle:version><enclosure url='a' sparkle:os='macos'/></item>"
      "<item><sparkle:version>2</sparkle:version><enclosure url='a' sparkle:os='Linux'/></item>"
      "<item><sparkle:version>3</sparkle:version><enclosure url='mac' sparkle:os='macos'/>"
      "<enclosure url='lin' sparkle:os='linux'/></item>"
      "<item><sparkle:version>4</sparkle:version><enclosure url='a'/></item>";
  const auto linux = itemsOf(items);
  ASSERT_EQ(linux.size(), 3U);
  EXPECT_EQ(linux[0].version, QStringLiteral("2"));
  EXPECT_EQ(linux[1].enclosure->url.fileName(), QStringLiteral("lin"));
  EXPECT_EQ(linux[2].version, QStringLiteral("4"));
  const auto mac = parse(feedOf(items), QStringLiteral("macos"));
  ASSERT_TRUE(mac);
  ASSERT_EQ(mac.value().size(), 3U);
  EXPECT_EQ(mac.value()[1].enclosure->url.fileName(), QStringLiteral("mac"));
}

TEST(Appcast, AnItemWithoutAPackageIsInformationalAndNeedsAPage) {
  const auto items = itemsOf(test::informationalItem("1") + "<item><sparkle:version>2</sparkle:version></item>" +
                             "<item><sparkle:version>3</sparkle:version><link>javascript:alert(1)</link></item>" +
                             itemOf("4", "<sparkle:informationalUpdate/><link>http://example.org/</link>"));
  ASSERT_EQ(items.size(), 2U);
  EXPECT_TRUE(items[0].informational);
  EXPECT_EQ(items[0].link, QUrl(QStringLiteral("https://example.org/1")));
  EXPECT_EQ(items[1].version, QStringLiteral("4"));
  EXPECT_TRUE(items[1].informational);
}

TEST(Appcast, PlainTextDescriptionsAreMarkedByTheirFormat) {
  const auto items = itemsOf(itemOf("1", "<description sparkle:format='plain-text'>a &lt; b</description>") +
                             itemOf("2", "<description format='plain-text'>x</description>"));
  ASSERT_EQ(items.size(), 2U);
  EXPECT_TRUE(items[0].descriptionIsPlainText);
  EXPECT_EQ(items[0].description, QStringLiteral("a < b"));
  EXPECT_FALSE(items[1].descriptionIsPlainText);
}

TEST(Appcast, AbsentLengthsDifferFromEmptyOnes) {
  const auto items = itemsOf(
      "<item><sparkle:version>1</sparkle:version><enclosure url='a'/></item>"
      "<item><sparkle:version>2</sparkle:version><enclosure url='a' length=''/></item>");
  ASSERT_EQ(items.size(), 2U);
  EXPECT_TRUE(items[0].enclosure->length.isNull());
  EXPECT_FALSE(items[1].enclosure->length.isNull());
}

TEST(Appcast, DocumentTypesAndCustomEntitiesAreRejected) {
  QByteArray laughs = "<?xml version='1.0'?><!DOCTYPE rss [<!ENTITY a0 'ha'>";
  for (int i = 1; i < 20; ++i) {
    const QByteArray inner = "&a" + QByteArray::number(i - 1) + ";";
    laughs += "<!ENTITY a" + QByteArray::number(i) + " '" + inner.repeated(10) + "'>";
  }
  laughs += "]><rss><channel><item><title>&a19;</title></item></channel></rss>";
  expectError(laughs, UpdateError::FeedUnreadable);
  expectError("<!DOCTYPE rss>" + feedOf(itemOf("1")).sliced(39), UpdateError::FeedUnreadable);
  expectError("<!DOCTYPE rss SYSTEM 'file:///etc/passwd'><rss><channel/></rss>", UpdateError::FeedUnreadable);
  expectError("<rss><channel><item><title>&undefined;</title></item></channel></rss>", UpdateError::FeedUnreadable);
}

TEST(Appcast, InvalidXmlIsUnreadable) {
  expectError("", UpdateError::FeedUnreadable);
  expectError("not found", UpdateError::FeedUnreadable);
  expectError(QByteArray("\x00\xff\xfe\x01", 4), UpdateError::FeedUnreadable);
  const QByteArray whole = feedOf(itemOf("1"));
  expectError(whole.first(whole.size() / 2), UpdateError::FeedUnreadable);
  expectError(whole + "<rss/>", UpdateError::FeedUnreadable);
}

TEST(Appcast, XmlOtherThanRssIsNotAnAppcast) {
  expectError("<html><body>Sign in</body></html>", UpdateError::FeedNoAppcast);
  expectError("<rss xmlns='http://example.org/'><channel/></rss>", UpdateError::FeedNoAppcast);
}

TEST(Appcast, DepthIsLimited) {
  const auto nested = [](int depth) {
    return feedOf("<item>" + QByteArray("<x>").repeated(depth) + QByteArray("</x>").repeated(depth) + "</item>");
  };
  EXPECT_TRUE(parse(nested(29)));
  expectError(nested(30), UpdateError::FeedUnreadable);
  expectError(nested(100000), UpdateError::FeedUnreadable);
}

TEST(Appcast, TheNumberOfItemsIsLimited) {
  EXPECT_EQ(itemsOf(itemOf("1").repeated(1000)).size(), 1000U);
  expectError(feedOf(itemOf("1").repeated(1001)), UpdateError::FeedUnreadable);
}

}  // namespace
}  // namespace zolt
