#pragma once

#include <QObject>
#include <functional>
#include <string>
#include <vector>

#include "app/ClosedTerminals.h"
#include "app/Questions.h"
#include "app/TerminalWindow.h"
#include "desktop/BlurBehind.h"
#include "settings/EmulationSettingsStore.h"
#include "view/TerminalTabs.h"

namespace zolt {

/// The names of the programs that run in the foreground of terminals.
std::vector<std::string> runningPrograms(const std::vector<TerminalPane*>& panes);

/// How long what is closed can be brought back.
std::chrono::milliseconds keptFor(const EmulationSettings& settings);

/// What a window of the full emulation does besides showing its terminals: its title is that of the current one; a bell
/// asks for attention while the window does not have the focus; what shows through it is blurred where that is set.
/// What the user closes is asked about where a program runs in the foreground, and kept for a while; what ends by
/// itself is gone. A child of the window. Main thread.
class EmulationWindowController : public QObject {
  Q_OBJECT

 public:
  /// `settings` and `closed` must outlive the window, whose area must be a TerminalTabs.
  EmulationWindowController(TerminalWindow& window, const EmulationSettingsStore& settings, ClosedTerminals& closed);

  TerminalTabs& tabs() { return m_tabs; }

 Q_SIGNALS:
  /// The window was closed by the user, and can be opened again.
  void closed();
  /// The window has no terminal any more, and is closed.
  void over();

 private:
  void apply();
  void showTitle();
  void followNotices(TerminalPane& pane);
  void welcome(TerminalPane& pane);
  void part(TerminalPane& pane);
  void paneIsOver(TerminalPane& pane);
  void askToClosePane(TerminalPane& pane);
  void askToCloseTab(int index);
  bool mayClose();
  void askFirst(ClosedThing thing, const std::vector<TerminalPane*>& panes, std::function<void()> close);

  TerminalWindow& m_window;
  TerminalTabs& m_tabs;
  const EmulationSettingsStore& m_settings;
  ClosedTerminals& m_closed;
  BlurBehind m_blur;
  bool m_isOver = false;
};

}  // namespace zolt
