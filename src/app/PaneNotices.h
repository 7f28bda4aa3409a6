#pragma once

#include <QObject>

#include "desktop/DesktopNotifications.h"
#include "settings/EmulationSettingsStore.h"
#include "view/EmulationSurface.h"
#include "view/TerminalPane.h"

namespace zolt {

/// What is said of a command that has ended; its line is empty where the shell does not tell it.
DesktopNotification noticeOf(const vt::EndedCommand& command, const QString& line);

/// Tells a user who looks at another window what happens in a pane: that a command of more than ten seconds has ended
/// (where the shell marks commands), and what its program asks to be told (OSC 9 and 777). A child of the pane, with
/// which it goes from window to window. Main thread.
class PaneNotices : public QObject {
  Q_OBJECT

 public:
  static constexpr vt::Milliseconds longCommand{10'000};

  /// `settings` and `desktop` must outlive the pane, which shows an EmulationSurface.
  PaneNotices(TerminalPane& pane, const EmulationSettingsStore& settings, DesktopNotifications& desktop);
  /// The PaneNotices of a pane; null if it has none.
  static PaneNotices* of(const TerminalPane& pane) {
    return pane.findChild<PaneNotices*>(QString(), Qt::FindDirectChildrenOnly);
  }

 Q_SIGNALS:
  /// The user has clicked a notice: the pane is to be brought up, with the desktop's permission to take the focus.
  void clicked(const QString& activationToken);

 private:
  void show(const DesktopNotification& notice);

  TerminalPane& m_pane;
  const EmulationSettingsStore& m_settings;
  DesktopNotifications& m_desktop;
};

}  // namespace zolt
