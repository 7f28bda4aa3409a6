#pragma once

#include <QObject>
#include <QPointer>
#include <utility>
#include <vector>

#include "desktop/LauncherEntry.h"
#include "view/TerminalTabs.h"

namespace zolt {

/// Shows in the desktop's dock how far the programs in the windows are that tell it (OSC 9;4): of several, that which
/// has the most left to do. Main thread.
class LauncherProgress : public QObject {
  Q_OBJECT

 public:
  explicit LauncherProgress(LauncherEntry entry) : m_entry(std::move(entry)) {}

  /// Follows these terminals from now on, while their window is on the screen.
  void follow(TerminalTabs& tabs);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void update();

  LauncherEntry m_entry;
  std::vector<QPointer<TerminalTabs>> m_followed;
};

}  // namespace zolt
