#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "platform/Environment.h"
#include "session/Shell.h"

namespace zolt {

/// The installed shells and the one that a new terminal runs. Probed once, on construction; main thread.
class ShellManager : public QObject {
  Q_OBJECT

 public:
  using IsExecutable = std::function<bool(const std::string& path)>;

  /// Probes with `isExecutable` and the variable SHELL of `environment`.
  ShellManager(const Environment& environment, const IsExecutable& isExecutable);

  /// The process-wide catalogue of the shells on this machine, created on first use.
  static ShellManager& shared();

  /// In display order.
  const std::vector<Shell>& availableShells() const { return m_availableShells; }
  const Shell& defaultShell() const { return m_defaultShell; }

  /// One line per shell: name, path, and a mark on the default.
  std::string summary() const;
  /// A copy of the entry with a fresh id.
  static Shell makeShell(const Shell& shell);

 Q_SIGNALS:
  /// Before a published property changes.
  void objectWillChange();

 private:
  void detectAvailableShells(const Environment& environment, const IsExecutable& isExecutable);

  std::vector<Shell> m_availableShells;
  Shell m_defaultShell = Shell::zsh();
};

}  // namespace zolt
