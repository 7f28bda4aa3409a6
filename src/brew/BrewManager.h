#pragma once

#include <QObject>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "brew/BrewPackage.h"
#include "platform/WorkerQueue.h"

namespace zolt {

/// Runs Homebrew's command-line tool and publishes what it says: lists of packages, one line of status, a busy flag.
///
/// Observable; main thread, but for the commands, which run beside each other on the worker queue. Nothing guards
/// against operations that overlap: what is published later wins. An operation whose manager is gone by the time its
/// command ends does nothing.
class BrewManager : public QObject {
  Q_OBJECT

 public:
  /// The text of a command's output, trimmed; nothing when it could not be launched or its output is not UTF-8.
  using Completion = std::function<void(const std::optional<QString>& output)>;

  /// Runs the first of `candidates` that is executable, or the bare word "brew" where none is, and refreshes at once.
  /// `queue` must outlive the manager.
  BrewManager(std::vector<std::string> candidates, WorkerQueue& queue);

  /// The process's one manager, of the tool's two usual places, made on first use.
  static BrewManager& shared();

  /// Loads everything anew: the installed packages with their details, and the check for outdated ones.
  void refresh();
  /// Only says when it is complete: what it prints is not read, deliberately, and `outdatedPackages` stays empty.
  void checkOutdated();
  /// Searches for `query` as it stands; an empty one empties the results at once.
  void search(const QString& query);
  void install(const BrewPackage& package);
  /// By name alone, whatever the package's type, deliberately.
  void upgrade(const BrewPackage& package);
  void upgradeAll();

  /// Runs the tool with `arguments` and calls `completion` on the main thread, unless the manager is gone before the
  /// command is started.
  void runBrewCommand(const QStringList& arguments, Completion completion);

  /// In the order in which their details came.
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

  void loadInstalledPackages();
  void loadPackageDetails(const QStringList& names, BrewPackageType type);
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
