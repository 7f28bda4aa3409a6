#include "brew/OneAtATime.h"

namespace zolt {
namespace {

using Names = std::vector<std::string>;
using BrewWarningTest = test::OneAtATime;

// Both streams of a command share one pipe, so their output arrives in the order in which it was printed.

TEST_F(BrewWarningTest, BetweenResultsIsAResult) {
  write("search.txt", "foo\nhomebrew/cask/foo-app\nfoo-tools\n");
  makeIdleManager();
  qputenv("FAKEBREW_MODE_search", "warns");
  manager->search(QStringLiteral("foo"));
  ASSERT_TRUE(waitForStatus("Found 5 results"));
  EXPECT_EQ(test::namesOf(manager->searchResults()),
            (Names{"foo", "Warning: Some taps are old.", "homebrew/cask/foo-app", "Warning: Some taps are old.",
                   "foo-tools"}));
  EXPECT_EQ(manager->searchResults()[1].type, BrewPackageType::Formula);
}

TEST_F(BrewWarningTest, BetweenInstalledNamesIsAName) {
  write("list-formula.txt", "wget\njq\n");
  qputenv("FAKEBREW_MODE_list", "warns");
  makeManager();
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(test::namesOf(manager->installedFormulae()), (Names{"wget", "Warning: Some taps are old.", "jq"}));
  EXPECT_EQ(std::ranges::count(calls(), "[info][--formula][Warning: Some taps are old.]"), 1);
}

TEST_F(BrewWarningTest, AmongDetailsIsIgnored) {
  write("list-formula.txt", "wget\n");
  write("info/wget.txt", "==> wget\nDesc: Internet file retriever\nInstalled 1.24.5\n");
  qputenv("FAKEBREW_MODE_info", "warns");
  makeManager();
  ASSERT_TRUE(waitUntilIdle());
  ASSERT_EQ(manager->installedFormulae().size(), 1U);
  EXPECT_EQ(manager->installedFormulae()[0].description, QStringLiteral("Internet file retriever"));
  EXPECT_EQ(manager->installedFormulae()[0].installedVersion, QStringLiteral("1.24.5"));
}

}  // namespace
}  // namespace zolt
