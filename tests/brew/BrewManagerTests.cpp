#include "brew/BrewManager.h"

#include <set>

#include <unistd.h>

#include <csignal>

#include "brew/BrewFixture.h"
#include "platform/ChildProcess.h"

namespace zolt {
namespace {

using test::namesOf;
using Type = BrewPackageType;
using Names = std::vector<std::string>;

class BrewManagerTest : public test::BrewTest {
 protected:
  BrewPackage package(const char* name, Type type) {
    return makeBrewPackage(QString::fromUtf8(name), std::nullopt, std::nullopt, type);
  }
};

std::string lines(const std::string& prefix, int count) {
  std::string text;
  for (int i = 0; i < count; ++i) {
    text += prefix + std::to_string(i) + "\n";
  }
  return text;
}

TEST_F(BrewManagerTest, ReportsThatHomebrewIsMissingAndRunsNothing) {
  manager = std::make_unique<BrewManager>(Names{"/no/such/brew", "/etc/passwd"}, WorkerQueue::utility());
  EXPECT_EQ(manager->status(), QStringLiteral("Homebrew not found"));
  EXPECT_FALSE(manager->isLoading());
  EXPECT_TRUE(manager->installedFormulae().empty());
  EXPECT_TRUE(manager->installedCasks().empty());
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_TRUE(calls().empty());
}

TEST_F(BrewManagerTest, UsesTheFirstCandidateThatIsExecutable) {
  const QString other = folder.filePath(QStringLiteral("other-brew"));
  write("other-brew", "#!/bin/sh\nexit 9\n");
  QFile::setPermissions(other, QFile::ReadOwner | QFile::ExeOwner);
  manager = std::make_unique<BrewManager>(Names{"/no/such/brew", ZOLT_FAKE_BREW, other.toStdString()},
                                          WorkerQueue::utility());
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(calls().size(), 3U);
}

TEST_F(BrewManagerTest, LooksForBrewAgainEachTime) {
  const QString late = folder.filePath(QStringLiteral("late-brew"));
  manager = std::make_unique<BrewManager>(Names{late.toStdString()}, WorkerQueue::utility());
  EXPECT_EQ(manager->status(), QStringLiteral("Homebrew not found"));
  ASSERT_TRUE(QFile::link(QStringLiteral(ZOLT_FAKE_BREW), late));
  manager->refresh();
  EXPECT_EQ(manager->status(), QStringLiteral("Loading installed packages..."));
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(calls().size(), 3U);
}

TEST_F(BrewManagerTest, LoadsBothListsWithDetailsAndChecksForOutdatedPackages) {
  write("list-formula.txt", "wget\njq\n");
  write("list-cask.txt", "some-app\n");
  write("info/wget.txt", "==> wget: stable 1.24.5\nDesc: Internet file retriever\nInstalled on request 1.24.5\n");
  write("info/jq.txt", "==> jq: stable 1.7\n");
  write("outdated-json.txt", "{\"formulae\":[{\"name\":\"wget\"}],\"casks\":[]}\n");
  makeManager();
  EXPECT_TRUE(manager->isLoading());
  EXPECT_EQ(manager->status(), QStringLiteral("Loading installed packages..."));
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(calls(), (Names{"[info][--cask][some-app]", "[info][--formula][jq]", "[info][--formula][wget]",
                            "[list][--cask]", "[list][--formula]", "[outdated][--json]"}));
  ASSERT_EQ(manager->installedFormulae().size(), 2U);
  for (const BrewPackage& each : manager->installedFormulae()) {
    EXPECT_EQ(each.type, Type::Formula);
    const bool isWget = each.name == QStringLiteral("wget");
    EXPECT_EQ(each.description, isWget ? std::optional(QStringLiteral("Internet file retriever")) : std::nullopt);
    EXPECT_EQ(each.installedVersion, isWget ? std::optional(QStringLiteral("1.24.5")) : std::nullopt);
  }
  ASSERT_EQ(namesOf(manager->installedCasks()), Names{"some-app"});
  EXPECT_EQ(manager->installedCasks()[0].type, Type::Cask);
  EXPECT_TRUE(manager->outdatedPackages().empty()) << "the check's output is not parsed";
}

TEST_F(BrewManagerTest, ReportsEachStepInTheStatus) {
  write("list-formula.txt", lines("formula", 12));
  makeManager();
  std::set<std::string> seen;
  QObject::connect(manager.get(), &BrewManager::objectWillChange, manager.get(),
                   [&] { seen.insert(manager->status().toStdString()); });
  ASSERT_TRUE(waitUntilIdle());
  seen.insert(manager->status().toStdString());
  EXPECT_EQ(seen, (std::set<std::string>{"Loading installed packages...", "Loaded 0 casks", "Loaded 12 formulae",
                                         "Outdated check complete"}));
}

TEST_F(BrewManagerTest, PublishesEmptyListsIfNothingIsInstalled) {
  makeIdleManager();
  EXPECT_TRUE(manager->installedFormulae().empty());
  EXPECT_TRUE(manager->installedCasks().empty());
}

TEST_F(BrewManagerTest, RequestsTheDetailsOfTheFirstFiftyOfAType) {
  write("list-formula.txt", lines("formula", 120));
  write("list-cask.txt", lines("cask", 51));
  makeManager();
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(manager->installedFormulae().size(), 50U);
  EXPECT_EQ(manager->installedCasks().size(), 50U);
  for (const std::string& name : namesOf(manager->installedFormulae())) {
    EXPECT_LT(std::stoi(name.substr(7)), 50) << name;
  }
  EXPECT_EQ(calls().size(), 103U);
}

TEST_F(BrewManagerTest, IsLoadingUntilTheFirstOfBothTypesIsDone) {
  write("list-cask.txt", "app\n");
  qputenv("FAKEBREW_MODE_info", "slow");
  makeManager();
  ASSERT_TRUE(test::waitFor([&] { return !manager->isLoading(); }));
  EXPECT_TRUE(manager->installedCasks().empty()) << "not loaded yet";
  EXPECT_TRUE(waitForStatus("Loaded 1 casks"));
}

TEST_F(BrewManagerTest, DropsAPackageWhoseDetailsAreNotUtf8) {
  write("list-formula.txt", "good\nbad\n");
  write("info/bad.txt", "Desc: caf\xE9\n");
  makeManager();
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(namesOf(manager->installedFormulae()), Names{"good"});
}

TEST_F(BrewManagerTest, MergesBothStreamsOfAFailingCommand) {
  makeIdleManager();
  qputenv("FAKEBREW_MODE_search", "fails");
  manager->search(QStringLiteral("nothing"));
  ASSERT_TRUE(waitForStatus("Found 1 results"));
  EXPECT_EQ(namesOf(manager->searchResults()), Names{"Error: No available formula with that name."});
}

TEST_F(BrewManagerTest, TurnsEveryLineOfASearchIntoAResult) {
  write("search.txt", "==> Formulae\nfoo\nfoo-tools\n\nhomebrew/cask/foo-app\n");
  makeIdleManager();
  manager->search(QStringLiteral("foo"));
  EXPECT_EQ(manager->status(), QStringLiteral("Searching..."));
  EXPECT_FALSE(manager->isLoading());
  ASSERT_TRUE(waitForStatus("Found 4 results"));
  EXPECT_EQ(namesOf(manager->searchResults()), (Names{"==> Formulae", "foo", "foo-tools", "homebrew/cask/foo-app"}));
  EXPECT_EQ(manager->searchResults().back().type, Type::Cask);
  EXPECT_EQ(manager->searchResults()[1].type, Type::Formula);
  EXPECT_EQ(calls(), Names{"[search][foo]"});
}

TEST_F(BrewManagerTest, ClearsTheResultsForAnEmptyQueryWithoutASearch) {
  write("search.txt", "foo\n");
  makeIdleManager();
  manager->search(QStringLiteral("foo"));
  ASSERT_TRUE(waitForStatus("Found 1 results"));
  forgetCalls();
  manager->search(QString());
  EXPECT_TRUE(manager->searchResults().empty());
  EXPECT_EQ(manager->status(), QStringLiteral("Found 1 results"));
  test::runLoopFor(std::chrono::milliseconds(50));
  EXPECT_TRUE(calls().empty());
}

TEST_F(BrewManagerTest, KeepsTheResultsAndTheStatusIfASearchPrintsInvalidUtf8) {
  write("search.txt", "foo\n");
  makeIdleManager();
  manager->search(QStringLiteral("foo"));
  ASSERT_TRUE(waitForStatus("Found 1 results"));
  qputenv("FAKEBREW_MODE_search", "bytes");
  manager->search(QStringLiteral("bar"));
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(manager->status(), QStringLiteral("Searching..."));
  EXPECT_EQ(namesOf(manager->searchResults()), Names{"foo"});
}

TEST_F(BrewManagerTest, FindsNothingIfASearchPrintsNothing) {
  makeIdleManager();
  qputenv("FAKEBREW_MODE_search", "silent");
  manager->search(QStringLiteral(" "));
  EXPECT_TRUE(waitForStatus("Found 0 results"));
  EXPECT_EQ(calls(), Names{"[search][ ]"}) << "a query of blanks is searched for";
}

TEST_F(BrewManagerTest, StaysInSearchingIfBrewCannotBeLaunched) {
  manager = std::make_unique<BrewManager>(Names{"/no/such/brew"}, WorkerQueue::utility());
  manager->search(QStringLiteral("foo"));
  test::runLoopFor(std::chrono::milliseconds(100));
  EXPECT_EQ(manager->status(), QStringLiteral("Searching..."));
}

TEST_F(BrewManagerTest, DoesNotTrimAQuery) {
  makeIdleManager();
  manager->search(QStringLiteral(" foo "));
  EXPECT_TRUE(waitForStatus("Found 0 results"));
  EXPECT_EQ(calls(), Names{"[search][ foo ]"});
}

TEST_F(BrewManagerTest, KeepsItsListsIfBrewIsGoneByTheNextRefresh) {
  write("list-formula.txt", "wget\n");
  write("list-cask.txt", "app\n");
  write("search.txt", "foo\n");
  const QString tool = folder.filePath(QStringLiteral("brew"));
  ASSERT_TRUE(QFile::link(QStringLiteral(ZOLT_FAKE_BREW), tool));
  manager = std::make_unique<BrewManager>(Names{tool.toStdString()}, WorkerQueue::utility());
  ASSERT_TRUE(waitUntilIdle());
  manager->search(QStringLiteral("foo"));
  ASSERT_TRUE(waitForStatus("Found 1 results"));
  ASSERT_TRUE(QFile::remove(tool));
  manager->refresh();
  EXPECT_EQ(manager->status(), QStringLiteral("Homebrew not found"));
  EXPECT_FALSE(manager->isLoading());
  EXPECT_EQ(namesOf(manager->installedFormulae()), Names{"wget"});
  EXPECT_EQ(namesOf(manager->installedCasks()), Names{"app"});
  EXPECT_EQ(namesOf(manager->searchResults()), Names{"foo"});
}

struct Operation {
  const char* name;
  void (*run)(BrewManager& manager, const BrewPackage& package);
  Type type;
  std::string call;
};

class Operations : public BrewManagerTest, public testing::WithParamInterface<Operation> {};

TEST_P(Operations, RunTheirCommandAndRefresh) {
  makeIdleManager();
  const QString before = manager->status();
  // Whatever its outcome.
  qputenv("FAKEBREW_MODE_install", "fails");
  qputenv("FAKEBREW_MODE_upgrade", "bytes");
  GetParam().run(*manager, package("a b$c'd\"--", GetParam().type));
  const bool all = std::string(GetParam().name) == "UpgradeAll";
  EXPECT_EQ(manager->status(), all ? QStringLiteral("Upgrading all packages...") : before);
  EXPECT_FALSE(manager->isLoading());
  ASSERT_TRUE(test::waitFor([&] { return calls().size() == 4; }));
  ASSERT_TRUE(waitUntilIdle());
  Names expected{GetParam().call, "[list][--cask]", "[list][--formula]", "[outdated][--json]"};
  std::ranges::sort(expected);
  EXPECT_EQ(calls(), expected);
}

INSTANTIATE_TEST_SUITE_P(
    BrewManager, Operations,
    testing::Values(Operation{"InstallFormula", [](BrewManager& m, const BrewPackage& p) { m.install(p); },
                              Type::Formula, "[install][a b$c'd\"--]"},
                    Operation{"InstallCask", [](BrewManager& m, const BrewPackage& p) { m.install(p); }, Type::Cask,
                              "[install][--cask][a b$c'd\"--]"},
                    Operation{"UpgradeFormula", [](BrewManager& m, const BrewPackage& p) { m.upgrade(p); },
                              Type::Formula, "[upgrade][a b$c'd\"--]"},
                    Operation{"UpgradeCask", [](BrewManager& m, const BrewPackage& p) { m.upgrade(p); }, Type::Cask,
                              "[upgrade][a b$c'd\"--]"},
                    Operation{"UpgradeAll", [](BrewManager& m, const BrewPackage&) { m.upgradeAll(); }, Type::Formula,
                              "[upgrade]"}),
    [](const auto& tested) { return std::string(tested.param.name); });

TEST_F(BrewManagerTest, PassesANameThatLooksLikeAnOptionUnchanged) {
  makeIdleManager();
  manager->upgrade(package("--help", Type::Cask));
  ASSERT_TRUE(test::waitFor([&] { return calls().size() >= 4; }));
  EXPECT_EQ(std::ranges::count(calls(), "[upgrade][--help]"), 1);
}

TEST_F(BrewManagerTest, LetsOperationsOverlap) {
  write("list-formula.txt", "wget\n");
  makeManager();
  manager->refresh();
  manager->refresh();
  ASSERT_TRUE(test::waitFor([&] { return calls().size() == 12; }));
  ASSERT_TRUE(waitUntilIdle());
  EXPECT_EQ(namesOf(manager->installedFormulae()), Names{"wget"}) << "the last one published replaces everything";
}

TEST_F(BrewManagerTest, MayBeDestroyedWhileItsCommandsAreRunning) {
  write("list-formula.txt", "wget\n");
  qputenv("FAKEBREW_MODE", "slow");
  makeManager();
  manager->search(QStringLiteral("x"));
  manager.reset();
  EXPECT_TRUE(test::waitFor([] { return test::brewCommands().empty(); }));
  test::runLoopFor(std::chrono::milliseconds(50));
  for (const std::string& call : calls()) {
    EXPECT_FALSE(call.starts_with("[info]")) << call;
  }
}

TEST_F(BrewManagerTest, WaitsForALargeOutputWithoutDelayingAnythingElse) {
  makeIdleManager();
  qputenv("FAKEBREW_MODE_search", "floods");
  manager->search(QStringLiteral("x"));
  // It prints more than its pipe holds and is not read before it ends, so it blocks; everything else goes on.
  ASSERT_TRUE(test::waitFor([] { return test::brewCommands().size() == 1; }));
  const std::vector<pid_t> flooding = test::brewCommands();
  test::runLoopFor(std::chrono::milliseconds(500));
  ASSERT_EQ(test::brewCommands(), flooding);
  ASSERT_TRUE(test::processRuns(flooding.front()));
  EXPECT_EQ(manager->status(), QStringLiteral("Searching..."));
  manager->refresh();
  EXPECT_TRUE(test::waitFor([&] { return calls().size() == 4; }));
  EXPECT_TRUE(test::waitFor([&] { return !manager->isLoading(); }));
  ASSERT_TRUE(test::waitFor([&] { return test::brewCommands() == flooding; }));
  EXPECT_TRUE(manager->searchResults().empty());
  kill(flooding.front(), SIGKILL);
  EXPECT_TRUE(test::waitFor([&] { return manager->status().startsWith(QStringLiteral("Found ")); }));
}

TEST_F(BrewManagerTest, AcceptsTenThousandSearchResults) {
  write("search.txt", lines("package", 10'000));
  makeIdleManager();
  manager->search(QStringLiteral("x"));
  EXPECT_TRUE(waitForStatus("Found 10000 results"));
}

}  // namespace
}  // namespace zolt
