#include <string>
#include <vector>

#include "brew/OneAtATime.h"

namespace zolt {
namespace {

using Changes = std::vector<std::string>;

// The properties that a manager publishes, one per line.
Changes publishedBy(const BrewManager& manager) {
  const auto line = [](const char* property, const std::vector<BrewPackage>& packages) {
    std::string text = property;
    for (const std::string& name : test::namesOf(packages)) {
      text += " " + name;
    }
    return text;
  };
  return {line("formulae", manager.installedFormulae()), line("casks", manager.installedCasks()),
          line("outdated", manager.outdatedPackages()),  line("results", manager.searchResults()),
          "status " + manager.status().toStdString(),    manager.isLoading() ? "loading" : "not loading"};
}

// The changes from one announcement to the next. If every change is announced before it is made, the first announcement
// shows none; if a property is not announced by itself, two change at once.
class Trace {
 public:
  explicit Trace(BrewManager& manager) : m_manager(manager), m_last(publishedBy(manager)) {
    QObject::connect(&manager, &BrewManager::objectWillChange, &m_context, [this] { look(); });
  }

  Changes changes() {
    look();
    return m_changes;
  }

 private:
  void look() {
    const Changes now = publishedBy(m_manager);
    std::string changed;
    for (std::size_t i = 0; i < now.size(); ++i) {
      if (now[i] != m_last[i]) changed += (changed.empty() ? "" : " + ") + now[i];
    }
    if (!changed.empty() || m_changes.empty()) m_changes.push_back(changed.empty() ? "as before" : changed);
    m_last = now;
  }

  BrewManager& m_manager;
  Changes m_last;
  Changes m_changes;
  QObject m_context;
};

using BrewAnnouncementTest = test::OneAtATime;

TEST_F(BrewAnnouncementTest, PrecedesEachChangeOfARefreshInOrder) {
  makeIdleManager();
  write("list-formula.txt", "wget\n");
  write("list-cask.txt", "some-app\n");
  Trace trace(*manager);
  manager->refresh();
  EXPECT_EQ(trace.changes(), (Changes{"as before", "loading", "status Loading installed packages..."}));
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(trace.changes(), (Changes{"as before", "loading", "status Loading installed packages...",
                                      "status Outdated check complete", "formulae wget", "not loading",
                                      "status Loaded 1 formulae", "casks some-app", "status Loaded 1 casks"}));
}

TEST_F(BrewAnnouncementTest, PrecedesEachChangeOfASearchInOrder) {
  write("search.txt", "foo\nbar\n");
  makeIdleManager();
  Trace trace(*manager);
  manager->search(QStringLiteral("x"));
  ASSERT_TRUE(waitForStatus("Found 2 results"));
  manager->search(QString());
  EXPECT_EQ(trace.changes(),
            (Changes{"as before", "status Searching...", "results foo bar", "status Found 2 results", "results"}));
}

TEST_F(BrewAnnouncementTest, PrecedesTheStatusOfAnUpgradeOfEverything) {
  makeIdleManager();
  Trace trace(*manager);
  manager->upgradeAll();
  EXPECT_EQ(trace.changes(), (Changes{"as before", "status Upgrading all packages..."}));
  ASSERT_TRUE(waitUntilIdle());
}

}  // namespace
}  // namespace zolt
