#include "updates/Version.h"

#include <gtest/gtest.h>

#include <QString>
#include <vector>

namespace zolt {
namespace {

std::weak_ordering order(const QString& a, const QString& b) {
  return compareVersions(a, b);
}

void expectOlder(const QString& a, const QString& b) {
  EXPECT_TRUE(order(a, b) < 0) << a.toStdString() << " against " << b.toStdString();
  EXPECT_TRUE(order(b, a) > 0) << b.toStdString() << " against " << a.toStdString();
}

void expectEqual(const QString& a, const QString& b) {
  EXPECT_TRUE(order(a, b) == 0) << a.toStdString() << " against " << b.toStdString();
  EXPECT_TRUE(order(b, a) == 0) << b.toStdString() << " against " << a.toStdString();
}

QString text(const char* characters) {
  return QString::fromUtf8(characters);
}

TEST(Version, NumbersCompareAsNumbers) {
  expectOlder(text("1.9"), text("1.10"));
  expectOlder(text("2"), text("10"));
  expectEqual(text("1.010"), text("1.10"));
  expectOlder(text("1.2.3"), text("1.3"));
}

TEST(Version, MissingNumbersAreZero) {
  expectEqual(text("1.0"), text("1.0.0"));
  expectEqual(text("1"), text("1.0.0.0"));
  expectOlder(text("1"), text("1.0.1"));
  expectEqual(text(""), text("0.0"));
  expectEqual(text("1.0b"), text("1b0"));
}

TEST(Version, ANumberIsNewerThanText) {
  expectOlder(text("1.0b1"), text("1.0"));
  expectOlder(text("1.0b1"), text("1.0.0"));
  expectOlder(text("1.0rc"), text("1.0.1"));
  expectOlder(text("1.b"), text("1.1"));
}

TEST(Version, TextsCompareAndThenTheNumbersAfterThem) {
  expectOlder(text("1.0a3"), text("1.0b1"));
  expectOlder(text("1.0b9"), text("1.0b10"));
  expectOlder(text("1.0b1"), text("1.0b1.1"));
  expectEqual(text("1.0 beta 2"), text("1.0beta2"));
}

TEST(Version, EverythingFromADashIsIgnored) {
  expectEqual(text("1.0-rc1"), text("1.0"));
  expectEqual(text("6.1.0-13-amd64"), text("6.1"));
  expectEqual(text("-1"), text(""));
}

TEST(Version, NumbersOfAnyLengthDoNotOverflow) {
  const QString large(400, u'9');
  expectOlder(large, QStringLiteral("1") + QString(400, u'0'));
  expectOlder(text("18446744073709551615"), text("18446744073709551616"));
  expectOlder(text("1"), large);
}

// Otherwise the newest version could depend on the order of the items.
TEST(Version, TheOrderIsTransitive) {
  const char* const parts[] = {"0", "1", "00", "10", ".", "b", "rc", "-", " ", "..", "é"};
  std::vector<QString> versions;
  for (const char* a : parts) {
    for (const char* b : parts) {
      for (const char* c : parts) {
        versions.push_back(text(a) + text(b) + text(c));
      }
    }
  }
  for (std::size_t i = 0; i < versions.size(); i += 7) {
    for (std::size_t j = 0; j < versions.size(); j += 11) {
      for (std::size_t k = 0; k < versions.size(); k += 13) {
        if (order(versions[i], versions[j]) <= 0 && order(versions[j], versions[k]) <= 0) {
          ASSERT_TRUE(order(versions[i], versions[k]) <= 0)
              << versions[i].toStdString() << ", " << versions[j].toStdString() << ", " << versions[k].toStdString();
        }
      }
    }
  }
}

}  // namespace
}  // namespace zolt
