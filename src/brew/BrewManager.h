#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "brew/BrewPackage.h"
#include "platform/NarrowQueue.h"
#include "platform/WorkerQueue.h"

namespace zolt {

/// Runs Homebrew's command-line tool and publishes the results: lists of packages, a one-line status, a busy flag.
///
/// Observable. Main thread only; the commands themselves run concurrently on the worker queue. Overlapping operations
/// are not prevented: the later result wins. An operation does nothing if its manager is gone when its command ends.
class BrewManager : public QObject {
  Q_OBJECT

 public:
  /// A command's output as trimmed text; absent if it could not be launched or its output is not UTF-8.
  using Completion = std::function<void(const std::optional<QString>& output)>;

  /// Uses the first of `candidates` that is executable, or the bare word "brew" if none is, and refreshes at once.
  /// `queue` must outlive the manager.
  BrewManager(std::vector<std::string> candidates, WorkerQueue& queue);

  /// The process-wide manager for the tool's two usual locations, created on first use.
  static BrewManager& shared();

  /// How many details of one refresh are requested at once. Each keeps a processor busy, so more than there are
  /// processors gain nothing, and a hundred at once stall the window whatever their priority.
  static int detailsAtOnce();

  /// Reloads everything: the installed packages with their details, and the check for outdated packages.
  void refresh();
  /// Reports only that the check is complete: its output is not parsed, deliberately, and `outdatedPackages` stays
  /// empty.
  void checkOutdated();
  /// Searches for `query` exactly as given; an empty query clears the results at once.
  void search(const QString& query);
  void install(const BrewPackage& package);
  /// By name only, deliberately regardless of the package's type.
  void upgrade(const BrewPackage& package);
  void upgradeAll();

  /// Runs brew with `arguments` and calls `completion` on the main thread. Does nothing if the manager is gone before
  /// the command starts.
  void runBrewCommand(const QStringList& arguments, Completion completion);

  /// In the order in which their details arrived.
  const std::vector<BrewPackage>& installedFormulae() const { return m_installedFormulae; }
  const std::vector<BrewPackage>& installedCasks() const { return m_installedCasks; }
  const std::vector<BrewPackage>& outdatedPackages() const { return m_outdatedPackages; }
  const std::vector<BrewPackage>& searchResults() const { return m_searchResults; }
  const QString& status() const { return m_status; }
  bool isLoading() const { return m_isLoading; }

 Q_SIGNALS:
  /// Before a published property changes.
  void objectWillChange();

 private:
  template <class T>
  void publish(T& property, T value) {
    Q_EMIT objectWillChange();
    property = std::move(value);
  }
  void setStatus(const QString& text) { publish(m_status, text); }

  template <class Queue>
  void run(const QStringList& arguments, Queue& queue, Completion completion);
  void loadInstalledPackages();
  void loadPackageDetails(const QStringList& names, BrewPackageType type, NarrowQueue& queue);
  void publishDetails(std::vector<BrewPackage> packages, BrewPackageType type);
  /// A completion that refreshes, whatever the output.
  Completion refreshing();

  std::vector<std::string> m_candidates;
  WorkerQueue& m_queue;
  std::vector<BrewPackage> m_installedFormulae;
  std::vector<BrewPackage> m_installedCasks;
  std::vector<BrewPackage> m_outdatedPackages;
  std::vector<BrewPackage> m_searchResults;
  QString m_status = QStringLiteral("Ready");
  bool m_isLoading = false;
};

}  // namespace zolt
