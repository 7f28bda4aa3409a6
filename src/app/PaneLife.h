#pragma once

#include <QObject>
#include <optional>
#include <string>

#include "platform/Clock.h"
#include "settings/EmulationSettingsStore.h"
#include "view/EmulationSurface.h"
#include "view/TerminalPane.h"

namespace zolt {

/// The life of a shell in a pane of the full emulation: what is typed first, and what becomes of the pane when the
/// shell ends. A child of the pane, with which it goes from window to window. Main thread.
class PaneLife : public QObject {
  Q_OBJECT

 public:
  /// A shell that fails sooner than this after its start does not close its pane: so that the error can be read.
  static constexpr std::chrono::seconds shortestLife{2};

  /// `settings` and `clock` must outlive the pane, which shows an EmulationSurface.
  PaneLife(TerminalPane& pane, const EmulationSettingsStore& settings, Clock& clock = Clock::steady());
  /// The PaneLife of a pane; null if it runs no shell.
  static PaneLife* of(const TerminalPane& pane) {
    return pane.findChild<PaneLife*>(QString(), Qt::FindDirectChildrenOnly);
  }

  /// What runs in the pane is a program in place of a shell.
  void setRunsProgram() { m_runsShell = false; }
  bool runsShell() const { return m_runsShell; }
  /// Types `command` and Return into the shell, once it has printed something or a second has passed.
  void typeFirst(const std::string& command);
  /// The shell has ended and nothing is left to read: the pane is to be closed.
  bool isOver() const { return m_isOver; }
  /// The status with which the shell ended, if it has and the pane stays.
  std::optional<int> status() const { return m_status; }

 Q_SIGNALS:
  /// `isOver` has become true.
  void over();
  /// The shell has ended, or could not be started, and the pane stays for its text to be read; without a status in the
  /// latter case.
  void stays(std::optional<int> status);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  EmulationSurface& surface() { return static_cast<EmulationSurface&>(m_pane.surface()); }
  PTYSession& session() { return m_pane.terminal().ptySession(); }
  void shellEnded(int status);
  void stayOpen(const QString& notice, std::optional<int> status);
  void end();

  TerminalPane& m_pane;
  const EmulationSettingsStore& m_settings;
  Clock& m_clock;
  Clock::TimePoint m_start;
  std::string m_command;  // still to be typed
  bool m_runsShell = true;
  bool m_hasEnded = false;
  bool m_isOver = false;
  std::optional<int> m_status;
};

}  // namespace zolt
