// How well what is typed stands for a command's title.
#include "view/CommandMatch.h"

#include <gtest/gtest.h>

#include <QStringList>
#include <algorithm>
#include <vector>

namespace zolt {
namespace {

QString best(const char* typed, const QStringList& titles) {
  std::vector<std::pair<int, QString>> found;
  for (const QString& title : titles) {
    if (const auto score = matchOf(QString::fromUtf8(typed), title)) found.emplace_back(*score, title);
  }
  if (found.empty()) return {};
  return std::ranges::max_element(found, {}, &std::pair<int, QString>::first)->second;
}

const QStringList kTitles{
    QStringLiteral("New Window"), QStringLiteral("New Tab"),       QStringLiteral("Close Tab"),
    QStringLiteral("Select All"), QStringLiteral("Find Next"),     QStringLiteral("Next Tab"),
    QStringLiteral("Split Down"), QStringLiteral("Move Tab Left"), QStringLiteral("Rename Tab...")};

TEST(CommandMatch, NeedsEveryCharacterInItsOrder) {
  EXPECT_TRUE(matchOf(QStringLiteral("nwtb"), QStringLiteral("New Tab")));
  EXPECT_FALSE(matchOf(QStringLiteral("tn"), QStringLiteral("New Tab")));
  EXPECT_FALSE(matchOf(QStringLiteral("neww"), QStringLiteral("New Tab")));
  EXPECT_FALSE(matchOf(QStringLiteral("x"), QString()));
  EXPECT_TRUE(matchOf(QString(), QStringLiteral("New Tab")));
}

TEST(CommandMatch, TakesNoNoticeOfCaseAndBlanks) {
  EXPECT_EQ(matchOf(QStringLiteral(" NEW  tab "), QStringLiteral("New Tab")),
            matchOf(QStringLiteral("newtab"), QStringLiteral("New Tab")));
  EXPECT_TRUE(matchOf(QStringLiteral("ÄHN"), QStringLiteral("Ähnlich")));
}

TEST(CommandMatch, PrefersTheStartsOfWords) {
  EXPECT_EQ(best("nt", kTitles), QStringLiteral("New Tab"));
  EXPECT_EQ(best("ct", kTitles), QStringLiteral("Close Tab"));
  EXPECT_EQ(best("sd", kTitles), QStringLiteral("Split Down"));
  EXPECT_EQ(best("mtl", kTitles), QStringLiteral("Move Tab Left"));
}

TEST(CommandMatch, PrefersCharactersThatFollowEachOther) {
  EXPECT_EQ(best("next", kTitles), QStringLiteral("Next Tab"));
  EXPECT_EQ(best("all", kTitles), QStringLiteral("Select All"));
  EXPECT_EQ(best("ren", kTitles), QStringLiteral("Rename Tab..."));
}

TEST(CommandMatch, PrefersTheShorterOfTitlesThatMatchAlike) {
  EXPECT_EQ(best("tab", {QStringLiteral("Tab Settings"), QStringLiteral("Tab")}), QStringLiteral("Tab"));
}

TEST(CommandMatch, IsFastForAnyText) {
  const QString typed(2000, QLatin1Char('a'));
  const QString title(5000, QLatin1Char('a'));
  EXPECT_TRUE(matchOf(typed, title));
  EXPECT_FALSE(matchOf(typed + QLatin1Char('b'), title));
}

}  // namespace
}  // namespace zolt
