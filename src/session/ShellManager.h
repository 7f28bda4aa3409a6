#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "platform/Environment.h"
#include "session/Shell.h"

namespace zolt {

/// The shells that the machine offers and the one that a new terminal runs. Probed once, when it is made; main thread.
class ShellManager : public QObject {
  Q_OBJECT

 public:
  using IsExecutable = std::function<bool(const std::string& path)>;

  /// Probes with `isExecutable` and with the variable SHELL of `environment`.
  ShellManager(const Environment& environment, const IsExecutable& isExecutable);

  /// The process-wide catalogue, of the real machine, made on first use.
  static ShellManager& shared();

  /// In the order in which they are shown.
  const std::vector<Shell>& availableShells() const { return m_availableShells; }
  const Shell& defaultShell() const { return m_defaultShell; }

  /// One line a shell: name, path, and a mark on the default.
  std::string summary() const;
  /// The same shell as an entry of its own, with a fresh id.
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
