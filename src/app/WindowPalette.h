#pragma once

#include <QObject>

#include "app/TerminalWindow.h"
#include "view/TerminalTabs.h"

namespace zolt {

/// Keeps the palette of a window of the full emulation in step with its theme: what stands around the terminal is as
/// dark or light as the terminal, in the desktop's own colours where these fit, and the menu bar has the ground of the
/// theme. A child of the window. Main thread.
class WindowPalette : public QObject {
  Q_OBJECT

 public:
  /// The window has its menu bar, and the area of the full emulation.
  explicit WindowPalette(TerminalWindow& window);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void apply();

  TerminalWindow& m_window;
  TerminalTabs& m_tabs;
};

}  // namespace zolt
