#include <gtest/gtest.h>

#include <set>
#include <utility>

#include "updates/FetchAddress.h"
#include "updates/PackageName.h"
#include "updates/PackagePlan.h"
#include "updates/SigningKey.h"
#include "updates/UpdateError.h"

namespace zolt {
namespace {

QUrl url(const char* text) {
  return QUrl(QString::fromUtf8(text));
}

TEST(FetchAddress, AllowsOnlyHttpsAndHttpFromThisMachine) {
  for (const char* allowed :
       {"https://example.org/a", "http://127.0.0.1:80/", "http://127.255.1.2/", "http://[::1]:8080/a",
        "http://localhost/a", "HTTP://LOCALHOST/a", "https://127.0.0.1/"}) {
    EXPECT_TRUE(mayFetch(url(allowed))) << allowed;
  }
  for (const char* refused :
       {"http://example.org/a", "http://128.0.0.1/", "http://localhost.example.org/", "http://127.0.0.1.example.org/",
        "http://127.0.0.1@example.org/", "http://[::2]/", "http://[::ffff:10.0.0.1]/", "http://0.0.0.0/",
        "ftp://localhost/", "file:///etc/passwd", "", "appcast.xml", "https://", "data:text/xml,x"}) {
    EXPECT_FALSE(mayFetch(url(refused))) << refused;
  }
}

TEST(FetchAddress, AllowsNoRedirectToAWeakerAddress) {
  EXPECT_TRUE(mayRedirect(url("https://a.example/"), url("https://b.example/")));
  EXPECT_TRUE(mayRedirect(url("http://localhost/"), url("http://127.0.0.1/")));
  EXPECT_TRUE(mayRedirect(url("http://localhost/"), url("https://b.example/")));
  EXPECT_FALSE(mayRedirect(url("https://a.example/"), url("http://a.example/")));
  EXPECT_FALSE(mayRedirect(url("https://a.example/"), url("http://127.0.0.1/")));
  EXPECT_FALSE(mayRedirect(url("http://localhost/"), url("http://a.example/")));
  EXPECT_FALSE(mayRedirect(url("http://localhost/"), url("file:///etc/passwd")));
}

TEST(PackageName, IsTheSanitizedLastPartOfThePath) {
  const std::pair<const char*, const char*> cases[] = {
      {"https://e.org/a/Zolt-1.2.tar.gz?x=/y#z", "Zolt-1.2.tar.gz"},
      {"https://e.org/a/Zolt%201.2.deb", "Zolt 1.2.deb"},
      {"https://e.org/a/..%2F..%2Fetc%2Fpasswd", "etcpasswd"},
      {"https://e.org/a/.hidden", "hidden"},
      {"https://e.org/a/%2E%2E", "Zolt-update"},
      {"https://e.org/a/%20. .b", "b"},
      {"https://e.org/", "Zolt-update"},
      {"https://e.org", "Zolt-update"},
      {"https://e.org/a%0A%1B%00b%7F.deb", "ab.deb"},
      {"https://e.org/a%E2%80%AEcod.deb", "acod.deb"},
      {"https://e.org/C:%5Cx", "Cx"},
  };
  for (const auto& [address, name] : cases) {
    EXPECT_EQ(packageFileName(url(address)).toStdString(), name) << address;
  }
}

TEST(PackageName, IsShortenedWithoutLosingItsSuffix) {
  const QString name =
      packageFileName(QUrl(QStringLiteral("https://e.org/") + QString(500, QChar(0x00e9)) + QStringLiteral(".tar.gz")));
  EXPECT_LE(name.toUtf8().size(), 120);
  EXPECT_GT(name.toUtf8().size(), 110);
  EXPECT_TRUE(name.endsWith(QLatin1String(".tar.gz")));
}

class PackagePlanTest : public testing::Test {
 protected:
  static AppcastEnclosure goodEnclosure() {
    AppcastEnclosure enclosure;
    enclosure.url = url("https://example.org/Zolt.deb");
    enclosure.length = QStringLiteral("12");
    enclosure.edSignature = QString::fromLatin1(test::SigningKey(1).signatureOf("x"));
    return enclosure;
  }
  static void expectRefused(const AppcastEnclosure& enclosure, const QString& key, UpdateError error) {
    const auto plan = planPackage(enclosure, key, 1000);
    ASSERT_FALSE(plan);
    EXPECT_EQ(plan.reason(), sentenceOf(error).toStdString());
  }

  const QString key = test::SigningKey(1).publicKey();
};

TEST_F(PackagePlanTest, AGoodPackageIsPlanned) {
  const auto plan = planPackage(goodEnclosure(), key, 1000);
  ASSERT_TRUE(plan);
  EXPECT_EQ(plan.value().length, 12);
  EXPECT_EQ(plan.value().fileName, QStringLiteral("Zolt.deb"));
  AppcastEnclosure undeclared = goodEnclosure();
  undeclared.length = QString();
  ASSERT_TRUE(planPackage(undeclared, key, 1000));
  EXPECT_EQ(planPackage(undeclared, key, 1000).value().length, std::nullopt);
}

TEST_F(PackagePlanTest, PackagesThatCannotBeVerifiedAreRejectedBeforeTheDownload) {
  expectRefused(goodEnclosure(), QString(), UpdateError::NoKey);
  expectRefused(goodEnclosure(), QStringLiteral("short"), UpdateError::KeyInvalid);
  AppcastEnclosure enclosure = goodEnclosure();
  enclosure.edSignature.clear();
  expectRefused(enclosure, key, UpdateError::NotSigned);
  enclosure.edSignature = QStringLiteral("AAAA");
  expectRefused(enclosure, key, UpdateError::SignatureUnreadable);
}

TEST_F(PackagePlanTest, LengthsMustBeNumbersWithinTheLimits) {
  const std::pair<const char*, UpdateError> cases[] = {
      {"", UpdateError::PackageLengthUnreadable},     {"-5", UpdateError::PackageLengthUnreadable},
      {"5 MB", UpdateError::PackageLengthUnreadable}, {"0", UpdateError::PackageEmpty},
      {"1001", UpdateError::PackageTooLarge},         {"99999999999999999999", UpdateError::PackageTooLarge}};
  for (const auto& [length, error] : cases) {
    AppcastEnclosure enclosure = goodEnclosure();
    enclosure.length = QString::fromLatin1(length);
    expectRefused(enclosure, key, error);
  }
}

TEST_F(PackagePlanTest, AddressesMustBeSecure) {
  AppcastEnclosure enclosure = goodEnclosure();
  enclosure.url = url("http://example.org/Zolt.deb");
  expectRefused(enclosure, key, UpdateError::PackageNotSecure);
}

TEST(UpdateError, HasADifferentSentenceForEachError) {
  std::set<QString> sentences;
  for (const UpdateError error : allUpdateErrors()) {
    const QString sentence = sentenceOf(error);
    EXPECT_TRUE(sentence.endsWith(u'.')) << sentence.toStdString();
    EXPECT_EQ(failureOf(error).reason, sentence.toStdString());
    EXPECT_TRUE(sentences.insert(sentence).second) << sentence.toStdString();
  }
  EXPECT_EQ(sentenceOf(UpdateError::NoFeed), QStringLiteral("No update feed is configured."));
  EXPECT_EQ(sentenceOf(UpdateError::FeedUnreadable), QStringLiteral("The update feed could not be read."));
  EXPECT_EQ(sentenceOf(UpdateError::FeedNothingUsable),
            QStringLiteral("The update feed has no version for this system."));
}

}  // namespace
}  // namespace zolt
