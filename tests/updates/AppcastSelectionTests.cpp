#include "updates/AppcastSelection.h"

#include <gtest/gtest.h>

#include <limits>

namespace zolt {
namespace {

using Outcome = AppcastSelection::Outcome;

const QDateTime kNow(QDate(2026, 6, 10), QTime(12, 0), Qt::UTC);

AppcastItem item(const char* version) {
  AppcastItem result;
  result.version = result.shortVersion = QString::fromLatin1(version);
  result.enclosure = AppcastEnclosure{.url = QUrl(QStringLiteral("https://example.org/a")),
                                      .length = {},
                                      .type = {},
                                      .edSignature = {},
                                      .version = {},
                                      .shortVersion = {},
                                      .os = {}};
  return result;
}

SelectionPolicy policy(CheckKind kind) {
  return {.kind = kind,
          .runningVersion = QStringLiteral("1.0"),
          .systemVersion = QStringLiteral("6.1.0-13-amd64"),
          .skippedVersion = {},
          .rolloutGroup = 0,
          .now = kNow};
}

QString offered(const std::vector<AppcastItem>& items, const SelectionPolicy& by) {
  const AppcastSelection selection = selectItem(items, by);
  return selection.outcome == Outcome::Offered ? selection.item.version : QStringLiteral("none");
}

TEST(AppcastSelection, TheNewestVersionIsOffered) {
  EXPECT_EQ(offered({item("1.1"), item("1.10"), item("1.9")}, policy(CheckKind::ByHand)), QStringLiteral("1.10"));
}

TEST(AppcastSelection, OlderAndEqualVersionsAreNotOffered) {
  EXPECT_EQ(selectItem({item("0.9"), item("1.0.0")}, policy(CheckKind::ByHand)).outcome, Outcome::UpToDate);
}

TEST(AppcastSelection, AFeedWithoutItemsHasNothingUsable) {
  EXPECT_EQ(selectItem({}, policy(CheckKind::ByHand)).outcome, Outcome::NothingUsable);
}

TEST(AppcastSelection, ItemsOfAChannelAreIgnored) {
  AppcastItem beta = item("2.0");
  beta.channel = QStringLiteral("beta");
  EXPECT_EQ(selectItem({beta}, policy(CheckKind::ByHand)).outcome, Outcome::NothingUsable);
  EXPECT_EQ(offered({beta, item("1.5")}, policy(CheckKind::ByHand)), QStringLiteral("1.5"));
}

TEST(AppcastSelection, ItemsForANewerSystemAreIgnored) {
  AppcastItem demanding = item("2.0");
  demanding.minimumSystemVersion = QStringLiteral("6.2");
  EXPECT_EQ(selectItem({demanding}, policy(CheckKind::ByHand)).outcome, Outcome::NothingUsable);
  demanding.minimumSystemVersion = QStringLiteral("6.1");
  EXPECT_EQ(offered({demanding}, policy(CheckKind::ByHand)), QStringLiteral("2.0"));
}

TEST(AppcastSelection, OnlyBackgroundChecksRespectASkippedVersion) {
  SelectionPolicy background = policy(CheckKind::Background);
  background.skippedVersion = QStringLiteral("1.2");
  EXPECT_EQ(selectItem({item("1.2"), item("1.1")}, background).outcome, Outcome::UpToDate);
  EXPECT_EQ(offered({item("1.2"), item("1.3")}, background), QStringLiteral("1.3"));
  SelectionPolicy byHand = background;
  byHand.kind = CheckKind::ByHand;
  EXPECT_EQ(offered({item("1.2")}, byHand), QStringLiteral("1.2"));
}

TEST(AppcastSelection, ACriticalUpdateCannotBeSkipped) {
  SelectionPolicy background = policy(CheckKind::Background);
  background.skippedVersion = QStringLiteral("1.2");
  AppcastItem critical = item("1.2");
  critical.critical = true;
  EXPECT_EQ(offered({critical}, background), QStringLiteral("1.2"));
  critical.criticalBelow = QStringLiteral("1.0");
  EXPECT_EQ(offered({critical}, background), QStringLiteral("none"));
  critical.criticalBelow = QStringLiteral("1.0.1");
  EXPECT_EQ(offered({critical}, background), QStringLiteral("1.2"));
}

TEST(AppcastSelection, ARolloutReachesOneGroupAfterTheOther) {
  AppcastItem phased = item("1.2");
  phased.phasedRolloutSeconds = 3600;
  SelectionPolicy background = policy(CheckKind::Background);
  for (int group = 0; group < 7; ++group) {
    background.rolloutGroup = group;
    phased.published = kNow.addSecs(-3600 * group);
    EXPECT_EQ(offered({phased}, background), QStringLiteral("1.2")) << group;
    phased.published = kNow.addSecs(-3600 * group + 1);
    EXPECT_EQ(offered({phased}, background), QStringLiteral("none")) << group;
  }
}

TEST(AppcastSelection, ChecksByHandAndCriticalUpdatesIgnoreARollout) {
  AppcastItem phased = item("1.2");
  phased.phasedRolloutSeconds = 3600;
  phased.published = kNow;
  SelectionPolicy by = policy(CheckKind::ByHand);
  by.rolloutGroup = 6;
  EXPECT_EQ(offered({phased}, by), QStringLiteral("1.2"));
  by.kind = CheckKind::Background;
  EXPECT_EQ(offered({phased}, by), QStringLiteral("none"));
  EXPECT_EQ(offered({phased, item("1.1")}, by), QStringLiteral("1.1"));
  phased.critical = true;
  EXPECT_EQ(offered({phased}, by), QStringLiteral("1.2"));
}

TEST(AppcastSelection, ARolloutWithoutADateHasReachedEverybodyAndAnEndlessOneNobody) {
  AppcastItem phased = item("1.2");
  phased.phasedRolloutSeconds = std::numeric_limits<std::int64_t>::max();
  SelectionPolicy background = policy(CheckKind::Background);
  background.rolloutGroup = 6;
  EXPECT_EQ(offered({phased}, background), QStringLiteral("1.2"));
  phased.published = kNow.addYears(-20);
  EXPECT_EQ(offered({phased}, background), QStringLiteral("none"));
}

}  // namespace
}  // namespace zolt
