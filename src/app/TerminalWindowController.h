#pragma once

#include <QObject>
#include <memory>
#include <vector>

#include "platform/Environment.h"
#include "view/ContentView.h"

namespace zolt {

/// Hosts the content of one terminal window, and the terminals that were added to it. Main thread.
class TerminalWindowController : public QObject {
  Q_OBJECT

 public:
  /// Owns `rootView` until a window takes it. Shells of further terminals inherit `environment`.
  explicit TerminalWindowController(std::unique_ptr<ContentView> rootView,
                                    Environment environment = processEnvironment());
  ~TerminalWindowController() override;

  ContentView& rootView() { return *m_rootView; }
  /// Passes ownership of the root view to the window that shows it.
  std::unique_ptr<ContentView> releaseRootView() { return std::move(m_ownedRootView); }

  /// Starts one more terminal with the default shell. In the log display it is not shown, deliberately: that has no
  /// tabs.
  void addTab();

  const std::vector<std::unique_ptr<TerminalController>>& terminals() const { return m_terminals; }
  /// Declared; nothing sets it.
  TerminalController* currentTerminal() const { return m_currentTerminal; }

 private:
  std::unique_ptr<ContentView> m_ownedRootView;
  ContentView* m_rootView;
  Environment m_environment;
  std::vector<std::unique_ptr<TerminalController>> m_terminals;
  TerminalController* m_currentTerminal = nullptr;
};

}  // namespace zolt
