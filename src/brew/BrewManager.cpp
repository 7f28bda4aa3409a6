#include "brew/BrewManager.h"

#include <QThread>
#include <algorithm>
#include <utility>

#include "brew/BrewCommand.h"
#include "brew/BrewOutput.h"
#include "platform/Environment.h"
#include "platform/MainQueue.h"

namespace zolt {

namespace {

constexpr qsizetype kMaxDetails = 50;

QString flagOf(BrewPackageType type) {
  return type == BrewPackageType::Cask ? QStringLiteral("--cask") : QStringLiteral("--formula");
}

// Checks the candidates in order, every time.
std::string brewPath(const std::vector<std::string>& candidates) {
  const auto found = std::ranges::find_if(candidates, isExecutableFile);
  return found == candidates.end() ? "brew" : *found;
}

std::vector<std::string> wordsOf(const QStringList& arguments) {
  std::vector<std::string> words;
  for (const QString& argument : arguments) {
    words.push_back(argument.toStdString());
  }
  return words;
}

}  // namespace

BrewManager::BrewManager(std::vector<std::string> candidates, WorkerQueue& queue)
    : m_candidates(std::move(candidates)), m_queue(queue) {
  refresh();
}

int BrewManager::detailsAtOnce() {
  return std::clamp(QThread::idealThreadCount(), 2, 4);
}

BrewManager& BrewManager::shared() {
  // Never destroyed: the sidebars of all windows share it. A separate queue: commands that hang (there may be one per
  // key typed) must not block other work.
  static auto* queue = new WorkerQueue(WorkerQueue::utilityThreads);
  static auto* manager = new BrewManager({"/opt/homebrew/bin/brew", "/usr/local/bin/brew"}, *queue);
  return *manager;
}

void BrewManager::runBrewCommand(const QStringList& arguments, Completion completion) {
  run(arguments, m_queue, std::move(completion));
}

template <class Queue>
void BrewManager::run(const QStringList& arguments, Queue& queue, Completion completion) {
  const MainQueue::Owner self(this);
  queue.async([self, candidates = m_candidates, words = wordsOf(arguments), environment = processEnvironment(),
               completion = std::move(completion)] {
    if (!self) return;
    const auto output = outputOfBrewCommand(brewPath(candidates), words, environment);
    std::optional<QString> text = output ? textOfBrewOutput(*output) : std::nullopt;
    MainQueue::async([completion, text = std::move(text)] { completion(text); });
  });
}

void BrewManager::refresh() {
  if (!isExecutableFile(brewPath(m_candidates))) {
    setStatus(QStringLiteral("Homebrew not found"));
    return;
  }
  loadInstalledPackages();
  checkOutdated();
}

void BrewManager::checkOutdated() {
  runBrewCommand({QStringLiteral("outdated"), QStringLiteral("--json")},
                 [this, self = MainQueue::Owner(this)](const std::optional<QString>&) {
                   if (self) setStatus(QStringLiteral("Outdated check complete"));
                 });
}

void BrewManager::loadInstalledPackages() {
  publish(m_isLoading, true);
  setStatus(QStringLiteral("Loading installed packages..."));
  // One queue per refresh, so that hanging commands of one do not delay the next.
  const auto details = std::make_shared<NarrowQueue>(m_queue, detailsAtOnce());
  for (const BrewPackageType type : {BrewPackageType::Formula, BrewPackageType::Cask}) {
    runBrewCommand({QStringLiteral("list"), flagOf(type)},
                   [this, self = MainQueue::Owner(this), type, details](const std::optional<QString>& output) {
                     if (self) loadPackageDetails(output ? linesOf(*output) : QStringList(), type, *details);
                   });
  }
}

void BrewManager::loadPackageDetails(const QStringList& names, BrewPackageType type, NarrowQueue& queue) {
  const auto packages = std::make_shared<std::vector<BrewPackage>>();
  const auto group = std::make_shared<TaskGroup>();
  const QStringList wanted = names.mid(0, kMaxDetails);
  for (const QString& name : wanted) {
    group->enter();
    run({QStringLiteral("info"), flagOf(type), name}, queue,
        [packages, group, name, type](const std::optional<QString>& output) {
          if (output) packages->push_back(packageOfInfo(name, type, *output));
          group->leave();
        });
  }
  group->notify([this, self = MainQueue::Owner(this), packages, type] {
    if (self) publishDetails(std::move(*packages), type);
  });
}

void BrewManager::publishDetails(std::vector<BrewPackage> packages, BrewPackageType type) {
  const bool casks = type == BrewPackageType::Cask;
  const QString loaded = QStringLiteral("Loaded %1 %2")
                             .arg(packages.size())
                             .arg(casks ? QStringLiteral("casks") : QStringLiteral("formulae"));
  publish(casks ? m_installedCasks : m_installedFormulae, std::move(packages));
  publish(m_isLoading, false);
  setStatus(loaded);
}

void BrewManager::search(const QString& query) {
  if (query.isEmpty()) {
    publish(m_searchResults, {});
    return;
  }
  setStatus(QStringLiteral("Searching..."));
  const MainQueue::Owner self(this);
  runBrewCommand({QStringLiteral("search"), query}, [this, self](const std::optional<QString>& output) {
    if (!output) return;
    MainQueue::async(self, [this, packages = packagesOfSearch(*output)] {
      const QString found = QStringLiteral("Found %1 results").arg(packages.size());
      publish(m_searchResults, packages);
      setStatus(found);
    });
  });
}

BrewManager::Completion BrewManager::refreshing() {
  return [this, self = MainQueue::Owner(this)](const std::optional<QString>&) {
    if (self) refresh();
  };
}

void BrewManager::install(const BrewPackage& package) {
  QStringList arguments{QStringLiteral("install")};
  if (package.type == BrewPackageType::Cask) arguments << flagOf(package.type);
  runBrewCommand(arguments << package.name, refreshing());
}

void BrewManager::upgrade(const BrewPackage& package) {
  runBrewCommand({QStringLiteral("upgrade"), package.name}, refreshing());
}

void BrewManager::upgradeAll() {
  setStatus(QStringLiteral("Upgrading all packages..."));
  runBrewCommand({QStringLiteral("upgrade")}, refreshing());
}

}  // namespace zolt
